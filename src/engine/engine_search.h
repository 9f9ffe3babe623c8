#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "engine/engine_launcher.h"
#include "engine/results_table.h"

namespace skyhop {

/// The programs with which a machine can run engines, apart from the program folder.
class EngineHost {
 public:
  virtual ~EngineHost() = default;

  /// Whether the system itself runs Windows programs.
  [[nodiscard]] virtual bool RunsWindowsPrograms() const = 0;
  /// The program that runs Windows programs on other systems, if it is installed.
  [[nodiscard]] virtual std::optional<std::filesystem::path> Wine() const = 0;
  /// The native VOACAP of this system, if it is installed.
  [[nodiscard]] virtual std::optional<std::filesystem::path> NativeVoacap() const = 0;
  /// The folder of the native VOACAP's antennas and coefficients; it need not exist.
  [[nodiscard]] virtual std::filesystem::path NativeData() const = 0;
  /// The estimate engine that is shipped with this program; it need not exist.
  [[nodiscard]] virtual std::filesystem::path EstimateEngine() const = 0;
};

enum class EngineKind {
  kOwn,       ///< in the program folder, started as it is
  kNative,    ///< the system's own VOACAP
  kWine,      ///< in the program folder, a Windows program on another system
  kEstimate,  ///< the built-in estimate
};

/// Whether an engine predicts a day or a point. Each use has a separate folder, so that their files
/// never collide.
enum class EngineUse { kChart, kPoint };

/// The result of a search for an engine, without running it.
struct EngineFinding {
  EngineKind kind = EngineKind::kOwn;
  std::filesystem::path executable;  ///< the file to run, or its expected place
  bool exists = false;               ///< the executable exists
  bool can_run = false;              ///< the system allows running it
  std::filesystem::path wine;        ///< the program that runs it, for kWine
  std::filesystem::path data;        ///< the folder of its antennas and coefficients
  /// Why this is not the engine in the program folder: sentences about what was missing. Empty if
  /// it is.
  std::string reason;
};

/// Searches for the engine of a choice, in this order: in the program folder; for VOACAP, the
/// system's own; a Windows program in the program folder, if it can be run; the estimate engine. If
/// none exists, returns the expected place in the program folder. kNone is never found.
[[nodiscard]] EngineFinding FindEngine(const EngineHost& host,
                                       const std::filesystem::path& program_folder,
                                       EngineChoice engine, EngineUse use = EngineUse::kChart);

/// The engine to use if the user has chosen none: VOACAP (LUF and MUF) if an installed one is found
/// with its data, else IONCAP or the estimate in its place.
[[nodiscard]] EngineChoice AutomaticEngine(const EngineHost& host,
                                           const std::filesystem::path& program_folder);

/// Whether the finding is the estimate engine, or its copy in IONCAP's place.
[[nodiscard]] bool IsEstimate(const EngineFinding& finding, const EngineHost& host);

/// The missing parts of an engine, as sentences; empty if there are none.
[[nodiscard]] std::string MissingParts(EngineChoice engine, const EngineFinding& finding);

/// The folder of an engine below the program folder: "IonCap", "ITSHFBC" or "ITSHFBC2".
[[nodiscard]] std::filesystem::path EngineFolder(EngineChoice engine,
                                                 EngineUse use = EngineUse::kChart);

/// A finding as text for the configuration window.
[[nodiscard]] std::string FindingText(const EngineFinding& finding);

/// The path of the executable for a command line. `folder` is the short form of the engine's folder
/// in the program folder; if the executable is there, its path begins with `folder`.
[[nodiscard]] std::filesystem::path EngineExecutable(const EngineFinding& finding,
                                                     const std::filesystem::path& folder,
                                                     EngineLauncher& launcher);

/// The command of a batch file that runs ICEPAC or VOACAP. `folder` is as above; `deck` and
/// `results` are file names in its "run" folder. Throws Error 5 for a path that no batch file can
/// hold.
[[nodiscard]] std::string ItsCommand(const EngineFinding& finding,
                                     const std::filesystem::path& folder, const std::string& deck,
                                     const std::string& results, EngineLauncher& launcher);

/// The command that runs IONCAP with a driver file. Throws like ItsCommand.
[[nodiscard]] std::string IonCapCommand(const EngineFinding& finding,
                                        const std::filesystem::path& driver,
                                        EngineLauncher& launcher);

/// The text of a path in the engine's driver file. Throws like ItsCommand.
[[nodiscard]] std::string DriverLine(const EngineFinding& finding,
                                     const std::filesystem::path& path,
                                     const EngineLauncher& launcher);

}  // namespace skyhop
