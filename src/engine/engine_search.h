#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "engine/engine_launcher.h"
#include "engine/results_table.h"

namespace skyhop {

/// What a machine has for running engines, beside the program folder.
class EngineHost {
 public:
  virtual ~EngineHost() = default;

  /// Whether the system starts Windows programs as it does its own.
  [[nodiscard]] virtual bool RunsWindowsPrograms() const = 0;
  /// The program that runs Windows programs elsewhere, when it is installed.
  [[nodiscard]] virtual std::optional<std::filesystem::path> Wine() const = 0;
  /// The VOACAP that is made for this system, when it is installed.
  [[nodiscard]] virtual std::optional<std::filesystem::path> NativeVoacap() const = 0;
  /// Where that one keeps its antennas and coefficients; it need not exist.
  [[nodiscard]] virtual std::filesystem::path NativeData() const = 0;
  /// The estimate engine that came with this program; it need not exist.
  [[nodiscard]] virtual std::filesystem::path EstimateEngine() const = 0;
};

enum class EngineKind {
  kOwn,       ///< in the program folder, started as it is
  kNative,    ///< the system's own VOACAP
  kWine,      ///< in the program folder, a Windows program on another system
  kEstimate,  ///< the built-in estimate
};

/// Whether an engine is to predict a day or a point. Each has a folder of its own, so that their
/// runs never meet.
enum class EngineUse { kChart, kPoint };

/// What is known of an engine without running it.
struct EngineFinding {
  EngineKind kind = EngineKind::kOwn;
  std::filesystem::path executable;  ///< what would be run, or where it is expected
  bool exists = false;               ///< there is a file of that name
  bool can_run = false;              ///< and the system may run it
  std::filesystem::path wine;        ///< what runs it, for kWine
  std::filesystem::path data;        ///< its folder of antennas and coefficients
  /// Why it is not the engine of the program folder: what was missed on the way, sentences; empty
  /// when it is.
  std::string reason;
};

/// Looks for the engine of a choice: in the program folder; for VOACAP the system's own; a Windows
/// program of the program folder, where something runs it; then the estimate engine. When none of
/// them is there, the finding is the expected place in the program folder. kNone is found nowhere.
[[nodiscard]] EngineFinding FindEngine(const EngineHost& host,
                                       const std::filesystem::path& program_folder,
                                       EngineChoice engine, EngineUse use = EngineUse::kChart);

/// The engine that predicts where no engine was chosen: VOACAP (LUF and MUF) where an installed one
/// is found with its data, else the one in IONCAP's place.
[[nodiscard]] EngineChoice AutomaticEngine(const EngineHost& host,
                                           const std::filesystem::path& program_folder);

/// Whether the finding is the estimate engine, also as the copy of it that is put in IONCAP's
/// place.
[[nodiscard]] bool IsEstimate(const EngineFinding& finding, const EngineHost& host);

/// What an engine needs and does not find, sentences; empty when all is there, and for the engines
/// that need nothing.
[[nodiscard]] std::string MissingParts(EngineChoice engine, const EngineFinding& finding);

/// The folder of an engine below the program folder: "IonCap", "ITSHFBC" or "ITSHFBC2".
[[nodiscard]] std::filesystem::path EngineFolder(EngineChoice engine,
                                                 EngineUse use = EngineUse::kChart);

/// What is found and used, in words for the configuration window.
[[nodiscard]] std::string FindingText(const EngineFinding& finding);

/// The executable as command lines have it: below `folder`, the engine's folder of this program in
/// its short form, when it is one of that folder.
[[nodiscard]] std::filesystem::path EngineExecutable(const EngineFinding& finding,
                                                     const std::filesystem::path& folder,
                                                     EngineLauncher& launcher);

/// The command of a batch file that runs ICEPAC or VOACAP. `folder` is as above; deck and results
/// are names in its "run" folder. Throws Error 5 for a path that no batch file can hold.
[[nodiscard]] std::string ItsCommand(const EngineFinding& finding,
                                     const std::filesystem::path& folder, const std::string& deck,
                                     const std::string& results, EngineLauncher& launcher);

/// The command that runs IONCAP with a driver file. Throws the same.
[[nodiscard]] std::string IonCapCommand(const EngineFinding& finding,
                                        const std::filesystem::path& driver,
                                        EngineLauncher& launcher);

/// How the engine is told a path in its driver file. Throws the same.
[[nodiscard]] std::string DriverLine(const EngineFinding& finding,
                                     const std::filesystem::path& path,
                                     const EngineLauncher& launcher);

}  // namespace skyhop
