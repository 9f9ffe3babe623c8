#include "platform/windows/windows_engine_launcher.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <string_view>

#include "common/errors.h"
#include "common/files.h"
#include "common/text.h"
#include "platform/windows/code_page.h"
#include "platform/windows/process_group.h"

namespace skyhop::platform {
namespace {

constexpr std::chrono::milliseconds kTimeToEnd{2000};

/// An argument for a command line, quoted if it contains blanks.
std::wstring Argument(const std::wstring& text) {
  if (text.empty() || text.find_first_of(L" \t") == std::wstring::npos) return text;
  return L'"' + text + L'"';
}

struct ShellStart {
  int code = 0;
  Handle process;
};

/// Opens a file or a program like a double click.
ShellStart ShellOpen(const std::wstring& file, const std::wstring& parameter,
                     const std::wstring& folder, int show) {
  SHELLEXECUTEINFOW start{};
  start.cbSize = sizeof start;
  // Return failures as codes instead of showing boxes. Finish before returning, since a console
  // program may end right after this call.
  start.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
  start.hwnd = ::GetDesktopWindow();
  start.lpVerb = L"Open";
  start.lpFile = file.c_str();
  start.lpParameters = parameter.c_str();
  start.lpDirectory = folder.c_str();
  start.nShow = show;
  ::ShellExecuteExW(&start);
  return {static_cast<int>(reinterpret_cast<INT_PTR>(start.hInstApp)), Handle(start.hProcess)};
}

/// Whether the command processor reads the text as one word without special characters.
bool IsPlain(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](char c) {
    return static_cast<unsigned char>(c) > 0x7F || IsLetter(c) || IsDigit(c) ||
           std::string_view("\\/:._-~$#@{}").find(c) != std::string_view::npos;
  });
}

}  // namespace

struct WindowsEngineLauncher::Child {
  Handle process;
  ProcessGroup group;
};

WindowsEngineLauncher::WindowsEngineLauncher() = default;

WindowsEngineLauncher::~WindowsEngineLauncher() = default;

WindowsEngineLauncher::Child* WindowsEngineLauncher::Find(ProcessId process) {
  const auto found = children_.find(process);
  return found == children_.end() ? nullptr : &found->second;
}

void WindowsEngineLauncher::ForgetEnded() {
  for (auto child = children_.begin(); child != children_.end();) {
    const bool runs = IsRunning(child->first) || child->second.group.IsRunning();
    child = runs ? std::next(child) : children_.erase(child);
  }
}

LaunchResult WindowsEngineLauncher::StartBatch(const std::filesystem::path& batch,
                                               const std::string& parameter,
                                               const std::filesystem::path& working_folder) {
  ForgetEnded();
  // The shell accepts any folder and would run the batch file in another one.
  std::error_code ignored;
  if (!std::filesystem::is_directory(working_folder, ignored)) return {SE_ERR_PNF, 0};
  ShellStart start =
      ShellOpen(batch.native(), Argument(Wide(parameter)), working_folder.native(), SW_HIDE);
  if (!start.process.IsOpen()) return {start.code, 0};
  const auto process = static_cast<ProcessId>(::GetProcessId(start.process.Get()));
  ProcessGroup group(start.process.Get());
  children_.insert_or_assign(process, Child{std::move(start.process), std::move(group)});
  return {start.code, process};
}

LaunchResult WindowsEngineLauncher::OpenInViewer(const std::string& viewer,
                                                 const std::filesystem::path& file) {
  const std::wstring folder = file.parent_path().native();
  const ShellStart own = ShellOpen(Wide(viewer), Argument(file.native()), folder, SW_SHOWNORMAL);
  if (own.code > 32) return {own.code, 0};
  return {ShellOpen(file.native(), {}, folder, SW_SHOWNORMAL).code, 0};
}

bool WindowsEngineLauncher::IsRunning(ProcessId process) {
  const Child* child = Find(process);
  return child != nullptr && ::WaitForSingleObject(child->process.Get(), 0) == WAIT_TIMEOUT;
}

bool WindowsEngineLauncher::WaitForEnd(ProcessId process, std::chrono::milliseconds longest) {
  const Child* child = Find(process);
  if (child == nullptr) return true;
  const auto most = std::clamp<long long>(longest.count(), 0, 0x7FFFFFFF);
  return ::WaitForSingleObject(child->process.Get(), static_cast<DWORD>(most)) != WAIT_TIMEOUT;
}

void WindowsEngineLauncher::End(ProcessId process) {
  Child* child = Find(process);
  if (child == nullptr) return;
  child->group.End();
  // This ends a process that could not be added to its group.
  if (!WaitForEnd(process, kTimeToEnd)) ::TerminateProcess(child->process.Get(), 1);
  const auto until = std::chrono::steady_clock::now() + kTimeToEnd;
  while (child->group.IsRunning() && std::chrono::steady_clock::now() < until) ::Sleep(5);
}

void WindowsEngineLauncher::EndWithThisProgram(ProcessId process) {
  for (auto& [id, child] : children_) child.group.EndWithThisProgram(id == process);
}

std::string WindowsEngineLauncher::Output(ProcessId /*process*/) {
  // The shell runs every batch file in its own console, which this program cannot read.
  return {};
}

std::filesystem::path WindowsEngineLauncher::ShortPath(const std::filesystem::path& path) {
  std::wstring name(MAX_PATH, L'\0');
  while (true) {
    const DWORD length =
        ::GetShortPathNameW(path.c_str(), name.data(), static_cast<DWORD>(name.size()));
    if (length == 0) return path;
    const bool fits = length < name.size();
    name.resize(length);
    if (fits) return name;
  }
}

std::string WindowsEngineLauncher::BatchText(const std::filesystem::path& path) const {
  std::string text = PathInCodePage(path, MachineCodePages().oem);
  if (!text.empty() && IsPlain(text)) return text;
  // A percent sign starts a variable even between quotes, so double it.
  std::string quoted = "\"";
  for (const char c : text) quoted.append(c == '%' ? 2 : 1, c);
  return quoted + '"';
}

std::string WindowsEngineLauncher::DriverText(const std::filesystem::path& path) const {
  return PathInCodePage(path, MachineCodePages().ansi);
}

}  // namespace skyhop::platform
