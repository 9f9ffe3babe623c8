#include <windows.h>

#include <shellapi.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iterator>

#include "common/files.h"
#include "platform/placed_files.h"
#include "platform/platform.h"
#include "platform/windows/code_page.h"
#include "platform/windows/registry_settings_store.h"
#include "platform/windows/url_moniker_fetcher.h"
#include "platform/windows/windows_engine_launcher.h"

namespace skyhop::platform {
namespace {

/// The system counts tenths of microseconds from the year 1601.
using FileTicks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
constexpr FileTicks kEpoch{116'444'736'000'000'000};

FILETIME ToFileTime(UtcTime time) {
  const auto ticks = static_cast<std::uint64_t>(
      (std::chrono::duration_cast<FileTicks>(time.time_since_epoch()) + kEpoch).count());
  return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32U)};
}

UtcTime FromFileTime(const FILETIME& time) {
  const auto ticks = static_cast<std::int64_t>(
      (static_cast<std::uint64_t>(time.dwHighDateTime) << 32U) | time.dwLowDateTime);
  return UtcTime(std::chrono::duration_cast<std::chrono::milliseconds>(FileTicks(ticks) - kEpoch));
}

class SystemClock : public Clock {
 public:
  [[nodiscard]] UtcTime UtcNow() const override {
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
  }

  [[nodiscard]] std::chrono::seconds LocalOffset(UtcTime time) const override {
    const FILETIME universal = ToFileTime(time);
    SYSTEMTIME fields{};
    SYSTEMTIME local_fields{};
    FILETIME local{};
    // Use the rules of the year of `time`, including summer time.
    if (!::FileTimeToSystemTime(&universal, &fields) ||
        !::SystemTimeToTzSpecificLocalTime(nullptr, &fields, &local_fields) ||
        !::SystemTimeToFileTime(&local_fields, &local)) {
      return {};
    }
    return std::chrono::round<std::chrono::seconds>(FromFileTime(local) - time);
  }
};

class WindowsTimekeeping : public Timekeeping {
 public:
  [[nodiscard]] std::chrono::milliseconds Passed() const override {
    return std::chrono::milliseconds(::GetTickCount64());
  }
  /// Only the time service has this state, and not every user may read it.
  [[nodiscard]] State ClockState() const override { return State::kUnknown; }
};

std::string LocaleFact(LCTYPE type) {
  wchar_t text[256] = {};
  const int length =
      ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, text, static_cast<int>(std::size(text)));
  return length > 1 ? Utf8({text, static_cast<std::size_t>(length - 1)}) : std::string();
}

std::string SystemText(const wchar_t* name) {
  wchar_t text[256] = {};
  DWORD size = sizeof text - sizeof(wchar_t);
  const LSTATUS status =
      ::RegGetValueW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", name,
                     RRF_RT_REG_SZ, nullptr, text, &size);
  return status == ERROR_SUCCESS ? Utf8(text) : std::string();
}

/// The true version. The older functions report a version that depends on the program's manifest.
OSVERSIONINFOW SystemVersion() {
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  using Function = LONG(WINAPI*)(OSVERSIONINFOW*);
  const HMODULE module = ::GetModuleHandleW(L"ntdll.dll");
  if (module == nullptr) return version;
  const auto function = reinterpret_cast<Function>(
      reinterpret_cast<void (*)()>(::GetProcAddress(module, "RtlGetVersion")));
  if (function != nullptr) function(&version);
  return version;
}

BOOL CALLBACK AddMonitor(HMONITOR, HDC, RECT* area, LPARAM list) {
  reinterpret_cast<std::vector<Monitor>*>(list)->push_back(
      {area->left, area->top, area->right, area->bottom});
  return TRUE;
}

class WindowsMachineFacts : public MachineFacts {
 public:
  [[nodiscard]] MachineDescription Describe() const override {
    MachineDescription machine;
    const std::filesystem::path executable = ExecutablePath();
    machine.executable = PathText(executable.filename());
    machine.module_file = PathText(executable);
    machine.word_length = static_cast<int>(sizeof(void*) * 8);
    machine.build = std::string("g++ ") + __VERSION__;
    DescribeSystem(machine);
    DescribeLocale(machine);
    ::EnumDisplayMonitors(nullptr, nullptr, AddMonitor,
                          reinterpret_cast<LPARAM>(&machine.monitors));
    return machine;
  }

 private:
  static void DescribeSystem(MachineDescription& machine) {
    const OSVERSIONINFOW version = SystemVersion();
    const std::string number = std::to_string(version.dwMajorVersion) + "." +
                               std::to_string(version.dwMinorVersion) + "." +
                               std::to_string(version.dwBuildNumber);
    const std::string product = SystemText(L"ProductName");
    machine.system_name = (product.empty() ? "Windows" : product) + " " + number;
    // One byte for each of the first two numbers, two bytes for the build.
    char text[9] = {};
    std::snprintf(text, sizeof text, "%02X%02X%04X",
                  static_cast<unsigned>(version.dwMajorVersion & 0xFFU),
                  static_cast<unsigned>(version.dwMinorVersion & 0xFFU),
                  static_cast<unsigned>(version.dwBuildNumber & 0xFFFFU));
    machine.system_version = text;
  }

  static void DescribeLocale(MachineDescription& machine) {
    const CodePages code_pages = MachineCodePages();
    machine.locale_id =
        std::to_string(::GetUserDefaultLCID()) + " (" + LocaleFact(LOCALE_SNAME) + ")";
    machine.ansi_code_page = std::to_string(code_pages.ansi);
    machine.oem_code_page = std::to_string(code_pages.oem);
    machine.country = LocaleFact(LOCALE_SENGLISHCOUNTRYNAME);
    machine.language = LocaleFact(LOCALE_SENGLISHLANGUAGENAME);
    machine.decimal_separator = LocaleFact(LOCALE_SDECIMAL);
    machine.thousand_separator = LocaleFact(LOCALE_STHOUSAND);
  }
};

}  // namespace

std::unique_ptr<SettingsStore> MakeSettingsStore() {
  return std::make_unique<RegistrySettingsStore>("Software\\Marlo");
}

std::unique_ptr<Clock> MakeClock() {
  return std::make_unique<SystemClock>();
}

std::unique_ptr<Timekeeping> MakeTimekeeping() {
  return std::make_unique<WindowsTimekeeping>();
}

std::unique_ptr<MachineFacts> MakeMachineFacts() {
  return std::make_unique<WindowsMachineFacts>();
}

std::unique_ptr<EngineLauncher> MakeEngineLauncher() {
  return std::make_unique<WindowsEngineLauncher>();
}

std::unique_ptr<UrlFetcher> MakeUrlFetcher() {
  return std::make_unique<UrlMonikerFetcher>();
}

std::vector<std::string> StartConsole(int argc, const char* const* argv) {
  // Restore the code page at the end: the console outlives the program, and other programs print
  // there too.
  static UINT before = 0;
  before = ::GetConsoleOutputCP();
  if (before != 0 && ::SetConsoleOutputCP(CP_UTF8)) {
    (void)std::atexit([] { ::SetConsoleOutputCP(before); });
  }
  // `argv` lacks the letters that the machine's code page lacks.
  int count = 0;
  wchar_t** const wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (wide == nullptr) return {argv, argv + argc};
  std::vector<std::string> arguments;
  for (int i = 0; i < count; ++i) arguments.push_back(Utf8(wide[i]));
  ::LocalFree(wide);
  return arguments;
}

}  // namespace skyhop::platform
