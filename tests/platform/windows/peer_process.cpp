#include <windows.h>

#include <chrono>
#include <stdexcept>

#include "common/files.h"
#include "desktop_world.h"
#include "peer_process.h"

namespace skyhop::testing {

struct PeerProcess::State {
  PROCESS_INFORMATION process{};
  HANDLE input = nullptr;
  HANDLE output = nullptr;
};

namespace {

/// Creates a pipe. The child inherits one end: the reading one if `child_reads`, else the writing
/// one.
void MakePipe(HANDLE& reading, HANDLE& writing, bool child_reads) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  constexpr DWORD size = 1 << 20;
  if (!::CreatePipe(&reading, &writing, &inherited, size)) throw std::runtime_error("no pipe");
  ::SetHandleInformation(child_reads ? writing : reading, HANDLE_FLAG_INHERIT, 0);
}

}  // namespace

PeerProcess::PeerProcess(const std::string& program, const std::string& argument)
    : state_(std::make_unique<State>()) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  MakePipe(start.hStdInput, state_->input, true);
  MakePipe(state_->output, start.hStdOutput, false);
  const std::wstring path = PathFromText(program).native();
  std::wstring command = L"\"" + path + L"\" " + PathFromText(argument).native();
  const BOOL started =
      ::CreateProcessW(path.c_str(), command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                       nullptr, nullptr, &start, &state_->process);
  ::CloseHandle(start.hStdInput);
  ::CloseHandle(start.hStdOutput);
  if (!started) throw std::runtime_error("cannot start " + program);
}

PeerProcess::~PeerProcess() {
  // Let conversations end that were just closed: some systems wait ten seconds for a partner that
  // dies then, and answer no other program meanwhile.
  (void)Read(200);
  ::TerminateProcess(state_->process.hProcess, 1);
  ::WaitForSingleObject(state_->process.hProcess, INFINITE);
  for (const HANDLE handle :
       {state_->process.hProcess, state_->process.hThread, state_->input, state_->output}) {
    ::CloseHandle(handle);
  }
}

void PeerProcess::Write(const std::string& text) {
  for (std::size_t written = 0; written < text.size();) {
    DWORD size = 0;
    if (!::WriteFile(state_->input, text.data() + written,
                     static_cast<DWORD>(text.size() - written), &size, nullptr)) {
      throw std::runtime_error("the peer has ended");
    }
    written += size;
  }
}

std::string PeerProcess::Read(int longest_ms) {
  std::string text;
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(longest_ms);
  while (true) {
    char block[65536];
    DWORD there = 0;
    DWORD size = 0;
    if (!::PeekNamedPipe(state_->output, nullptr, 0, nullptr, &there, nullptr)) return text;
    if (there > 0) {
      if (!::ReadFile(state_->output, block, sizeof block, &size, nullptr)) return text;
      text.append(block, size);
    } else if (!text.empty() || std::chrono::steady_clock::now() >= end) {
      return text;
    } else if (!RunMessages()) {
      ::Sleep(1);
    }
  }
}

void PeerProcess::Suspend() {
  ::SuspendThread(state_->process.hThread);
}

void PeerProcess::Resume() {
  ::ResumeThread(state_->process.hThread);
}

}  // namespace skyhop::testing
