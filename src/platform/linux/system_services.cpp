#include <langinfo.h>
#include <sys/timex.h>
#include <sys/utsname.h>

#include <charconv>
#include <clocale>
#include <cstdlib>
#include <ctime>
#include <fstream>

#include "common/files.h"
#include "platform/linux/posix_engine_launcher.h"
#include "platform/placed_files.h"
#include "platform/platform.h"

namespace skyhop::platform {
namespace {

class SystemClock : public Clock {
 public:
  [[nodiscard]] UtcTime UtcNow() const override {
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
  }

  [[nodiscard]] std::chrono::seconds LocalOffset(UtcTime time) const override {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm local{};
    if (::localtime_r(&seconds, &local) == nullptr) return {};
    return std::chrono::seconds(local.tm_gmtoff);
  }
};

class LinuxTimekeeping : public Timekeeping {
 public:
  [[nodiscard]] std::chrono::milliseconds Passed() const override {
    timespec time{};
    ::clock_gettime(CLOCK_BOOTTIME, &time);
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::seconds(time.tv_sec) +
                                                         std::chrono::nanoseconds(time.tv_nsec));
  }

  [[nodiscard]] State ClockState() const override {
    timex facts{};
    // This only queries. The call fails if the system forbids it.
    if (::adjtimex(&facts) < 0) return State::kUnknown;
    return (facts.status & STA_UNSYNC) == 0 ? State::kSynchronised : State::kUnsynchronised;
  }
};

/// "6.1.12-3" as hexadecimal "6010c": one byte for each of the first three numbers.
std::string VersionAsHexadecimal(const char* release) {
  const char* const end = release + std::char_traits<char>::length(release);
  unsigned value = 0;
  for (int part = 0; part < 3; ++part) {
    unsigned number = 0;
    const auto result = std::from_chars(release, end, number);
    release = result.ptr == end ? end : result.ptr + 1;
    value = (value << 8U) | (number & 0xFFU);
  }
  char text[9] = {};
  const auto result = std::to_chars(text, text + 8, value, 16);
  return {text, result.ptr};
}

std::string DistributionName() {
  std::ifstream file("/etc/os-release");
  const std::string key = "PRETTY_NAME=";
  for (std::string line; std::getline(file, line);) {
    if (line.compare(0, key.size(), key) != 0) continue;
    line.erase(0, key.size());
    std::erase(line, '"');
    return line;
  }
  return {};
}

class LinuxMachineFacts : public MachineFacts {
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
    return machine;
  }

 private:
  static void DescribeSystem(MachineDescription& machine) {
    utsname system{};
    if (::uname(&system) != 0) return;
    machine.system_name = system.sysname + std::string(" ") + system.release;
    const std::string distribution = DistributionName();
    if (!distribution.empty()) machine.system_name = distribution + ", " + machine.system_name;
    machine.system_version = VersionAsHexadecimal(system.release);
  }

  static void DescribeLocale(MachineDescription& machine) {
    locale_t locale = ::newlocale(LC_ALL_MASK, "", nullptr);
    if (locale == nullptr) locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    if (locale == nullptr) return;
    machine.locale_id = LocaleName();
    machine.ansi_code_page = ::nl_langinfo_l(CODESET, locale);
    machine.oem_code_page = machine.ansi_code_page;
    machine.decimal_separator = ::nl_langinfo_l(RADIXCHAR, locale);
    machine.thousand_separator = ::nl_langinfo_l(THOUSEP, locale);
    ::freelocale(locale);
    // A locale's name is language_COUNTRY.codeset.
    const std::string name = machine.locale_id.substr(0, machine.locale_id.find_first_of(".@"));
    const std::size_t line = name.find('_');
    machine.language = name.substr(0, line);
    if (line != std::string::npos) machine.country = name.substr(line + 1);
  }

  static std::string LocaleName() {
    for (const char* variable : {"LC_ALL", "LC_NUMERIC", "LANG"}) {
      if (const char* value = std::getenv(variable); value != nullptr && *value != '\0') {
        return value;
      }
    }
    return "C";
  }
};

}  // namespace

std::unique_ptr<Clock> MakeClock() {
  return std::make_unique<SystemClock>();
}

std::unique_ptr<Timekeeping> MakeTimekeeping() {
  return std::make_unique<LinuxTimekeeping>();
}

std::unique_ptr<MachineFacts> MakeMachineFacts() {
  return std::make_unique<LinuxMachineFacts>();
}

std::unique_ptr<EngineLauncher> MakeEngineLauncher() {
  return std::make_unique<PosixEngineLauncher>();
}

std::vector<std::string> StartConsole(int argc, const char* const* argv) {
  return {argv, argv + argc};
}

}  // namespace skyhop::platform
