#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace skyhop::estimate {

/// The contents of the driver file.
struct Driver {
  std::filesystem::path deck;
  std::filesystem::path results;
};

/// Reads the driver: the path of the deck and the path of the results file in UTF-8, a line each,
/// ended by LF or CR LF and otherwise taken as they are. Ignores further lines.
/// Throws Error 62 (a line is missing), 5 (it is empty, holds a null byte or is longer than 32768
/// bytes).
[[nodiscard]] Driver ReadDriver(std::istream& in);

/// Reads the deck, of at most 1 MiB, and writes the results.
/// Throws Error 13 for a bad deck, with the deck's path in front of the description, and the Errors
/// of ReadFile and WriteFileAtOnce; the results file is not touched then.
void RunDriver(const Driver& driver);

/// The deck and the results file that arguments name as those of ICEPAC and VOACAP do: "SILENT" or
/// "-s", a folder and the names of both files in its "run" folder; "--run-dir=" names another
/// folder for them. Nothing for other arguments.
[[nodiscard]] std::optional<Driver> DriverFromArguments(
    std::span<const std::string_view> arguments);

/// The whole program. Without arguments it runs the driver on `in`; with the arguments of ICEPAC
/// and VOACAP it runs their deck; "--help" and "--version" print to `out`. Returns the exit status:
/// 0; 1 after a failure, which a line on `err` explains; 2 for other arguments.
[[nodiscard]] int RunEngine(std::span<const std::string_view> arguments, std::istream& in,
                            std::ostream& out, std::ostream& err);

}  // namespace skyhop::estimate
