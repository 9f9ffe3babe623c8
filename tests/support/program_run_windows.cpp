#include <windows.h>

#include "common/files.h"
#include "common/text.h"
#include "support/program_run.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

constexpr std::size_t kMost = std::size_t{64} << 20U;

std::wstring Wide(const std::string& text) {
  return PathFromText(text).native();
}

/// An argument between quotes, in the form in which programs split command lines: a backslash is
/// literal unless it precedes a quote.
std::wstring Quoted(const std::wstring& text) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : text) {
    if (c == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    quoted += c;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

HANDLE InheritedFile(const std::filesystem::path& path) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  return ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

ProgramResult RunProgram(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments,
                         const std::map<std::string, std::string>& environment) {
  const TemporaryFolder folder;
  std::wstring command = Quoted(program.native());
  for (const std::string& argument : arguments) command += L' ' + Quoted(Wide(argument));
  for (const auto& [name, value] : environment) {
    ::SetEnvironmentVariableW(Wide(name).c_str(), Wide(value).c_str());
  }
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = InheritedFile(folder / "out");
  start.hStdError = InheritedFile(folder / "err");
  PROCESS_INFORMATION process{};
  DWORD status = static_cast<DWORD>(-1);
  if (::CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr,
                       nullptr, &start, &process)) {
    ::WaitForSingleObject(process.hProcess, 120000);
    ::GetExitCodeProcess(process.hProcess, &status);
    ::CloseHandle(process.hProcess);
    ::CloseHandle(process.hThread);
  }
  ::CloseHandle(start.hStdOutput);
  ::CloseHandle(start.hStdError);
  // Programs use this system's line end; the tests' texts use LF on every system.
  return {static_cast<int>(status), ReplaceAll(ReadFile(folder / "out", kMost), "\r\n", "\n"),
          ReplaceAll(ReadFile(folder / "err", kMost), "\r\n", "\n")};
}

}  // namespace skyhop::testing
