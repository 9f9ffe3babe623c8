#include "estimate/run.h"

#include <cstddef>
#include <cstdlib>
#include <istream>
#include <ostream>
#include <system_error>
#include <vector>

#include "common/errors.h"
#include "common/files.h"
#include "common/program.h"
#include "common/text.h"
#include "estimate/deck.h"
#include "estimate/report.h"

namespace skyhop::estimate {
namespace {

constexpr std::string_view kUsage =
    "usage: skyhop-estimate < driver\n"
    "       skyhop-estimate SILENT|-s [--run-dir=FOLDER] FOLDER DECK RESULTS\n"
    "       skyhop-estimate --help | --version\n"
    "\n"
    "Estimates MUF, FOT, HPF and LUF of a radio circuit by the hour, or signal, SNR and "
    "reliability\n"
    "by frequency. The driver has two lines: the path of the deck to read and the path of the\n"
    "results file to write. As arguments they are names of files in the run folder, FOLDER/run.\n";

/// The path that a line of the driver names. On systems with wide paths the line may be in UTF-8,
/// or in the code page of the machine as for other engines.
std::filesystem::path NamedPath(const std::string& line) {
  try {
    return PathFromText(line);
  } catch (const std::filesystem::filesystem_error&) {
    // The line is not UTF-8. Systems whose paths are bytes accept any text and never get here.
    std::wstring wide(line.size() + 1, L'\0');
    const std::size_t length = std::mbstowcs(wide.data(), line.c_str(), wide.size());
    if (length == static_cast<std::size_t>(-1)) throw;
    return wide.substr(0, length);
  }
}

std::filesystem::path ReadPath(std::istream& in, const std::string& what) {
  static constexpr std::size_t kLongest = 32768;
  std::string line;
  char c = 0;
  bool any = false;
  while (in.get(c) && c != '\n') {
    any = true;
    line += c;
    if (line.size() > kLongest) {
      throw Error(errors::kInvalidCall, "driver, " + what + ": the line is too long for a path");
    }
  }
  if (!any && in.eof()) {
    throw Error(errors::kInputPastEnd, "driver, " + what + ": the line is missing");
  }
  if (line.ends_with('\r')) line.pop_back();
  if (line.empty()) throw Error(errors::kInvalidCall, "driver, " + what + ": the line is empty");
  if (line.find('\0') != std::string::npos) {
    throw Error(errors::kInvalidCall, "driver, " + what + ": the path holds a null byte");
  }
  return NamedPath(line);
}

}  // namespace

Driver ReadDriver(std::istream& in) {
  Driver driver;
  driver.deck = ReadPath(in, "line 1 (deck)");
  driver.results = ReadPath(in, "line 2 (results)");
  return driver;
}

std::optional<Driver> DriverFromArguments(std::span<const std::string_view> arguments) {
  static constexpr std::string_view kRunFolder = "--run-dir=";
  std::optional<std::filesystem::path> run_folder;
  std::vector<std::string_view> names;
  bool silent = false;
  for (const std::string_view argument : arguments) {
    if (argument == "-s" || (names.empty() && EqualsIgnoringCase(argument, "SILENT"))) {
      silent = true;
    } else if (argument.substr(0, kRunFolder.size()) == kRunFolder) {
      run_folder = NamedPath(std::string(argument.substr(kRunFolder.size())));
    } else {
      names.push_back(argument);
    }
  }
  if (!silent || names.size() != 3) return std::nullopt;
  if (!run_folder) run_folder = NamedPath(std::string(names[0])) / "run";
  return Driver{*run_folder / NamedPath(std::string(names[1])),
                *run_folder / NamedPath(std::string(names[2]))};
}

void RunDriver(const Driver& driver) {
  static constexpr std::size_t kLongestDeck = 1U << 20U;
  const std::string text = ReadFile(driver.deck, kLongestDeck);
  std::error_code ignored;
  if (std::filesystem::equivalent(driver.deck, driver.results, ignored)) {
    throw Error(errors::kInvalidCall,
                "the results would replace the deck " + PathText(driver.deck));
  }
  Deck deck;
  try {
    deck = ReadDeck(text);
  } catch (const Error& error) {
    throw Error(error.Number(), PathText(driver.deck) + ", " + error.what());
  }
  WriteFileAtOnce(driver.results, Report(deck));
}

int RunEngine(std::span<const std::string_view> arguments, std::istream& in, std::ostream& out,
              std::ostream& err) {
  try {
    const std::optional<Driver> driver = DriverFromArguments(arguments);
    if (arguments.empty()) {
      RunDriver(ReadDriver(in));
    } else if (driver) {
      RunDriver(*driver);
    } else if (arguments.size() == 1 && arguments[0] == "--help") {
      out << kUsage;
    } else if (arguments.size() == 1 && arguments[0] == "--version") {
      out << "skyhop-estimate " << VersionText() << '\n';
    } else {
      err << "skyhop-estimate: cannot use the argument \"" << arguments[0] << "\"\n" << kUsage;
      return 2;
    }
    return 0;
  } catch (const std::exception& error) {
    err << "skyhop-estimate: " << error.what() << '\n';
    return 1;
  }
}

}  // namespace skyhop::estimate
