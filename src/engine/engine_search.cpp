#include "engine/engine_search.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <vector>

#include "common/files.h"
#include "common/text.h"
#include "engine/antenna.h"

namespace skyhop {
namespace {

enum class FileKind { kNone, kWindowsProgram, kBinary, kOther };

/// Determines the kind by the first bytes of the file.
FileKind KindOf(const std::filesystem::path& path) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(path, ignored)) return FileKind::kNone;
  std::ifstream file(path, std::ios::binary);
  std::string start(4, '\0');
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  if (start.substr(0, 2) == "MZ") return FileKind::kWindowsProgram;
  return start == "\x7F"
                  "ELF"
             ? FileKind::kBinary
             : FileKind::kOther;
}

bool MayRun(const std::filesystem::path& path) {
  std::error_code ignored;
  const std::filesystem::file_status status = std::filesystem::status(path, ignored);
  using std::filesystem::perms;
  constexpr perms executable = perms::owner_exec | perms::group_exec | perms::others_exec;
  return std::filesystem::is_regular_file(status) &&
         (status.permissions() & executable) != perms::none;
}

bool IsFolder(const std::filesystem::path& path) {
  std::error_code ignored;
  return std::filesystem::is_directory(path, ignored);
}

/// The name of an engine's executable below its folder.
std::filesystem::path ExecutableName(EngineChoice engine) {
  if (engine == EngineChoice::kIonCap) return "ioncap.exe";
  return std::filesystem::path("bin_win") /
         (engine == EngineChoice::kIcePac ? "icepacw.exe" : "voacapw.exe");
}

bool IsVoacap(EngineChoice engine) {
  return engine == EngineChoice::kVoaCap || engine == EngineChoice::kVoaCapSnr;
}

EngineFinding Found(EngineKind kind, const std::filesystem::path& executable,
                    const std::filesystem::path& data, const std::string& reason) {
  EngineFinding finding;
  finding.kind = kind;
  finding.executable = executable;
  finding.exists = KindOf(executable) != FileKind::kNone;
  finding.can_run = MayRun(executable);
  finding.data = data;
  finding.reason = reason;
  return finding;
}

void Say(std::string& reason, const std::string& sentence) {
  if (!reason.empty()) reason += ' ';
  reason += sentence;
}

/// The system's own VOACAP, or nothing; then adds why to `reason`.
std::optional<EngineFinding> FindNative(const EngineHost& host, std::string& reason) {
  if (host.RunsWindowsPrograms()) return std::nullopt;
  const std::optional<std::filesystem::path> program = host.NativeVoacap();
  if (!program) {
    Say(reason, "There is no voacapl on the search path.");
    return std::nullopt;
  }
  const std::filesystem::path data = host.NativeData();
  if (!IsFolder(data)) {
    Say(reason, "There is " + PathText(*program) + ", but its data are missing in " +
                    PathText(data) + "; makeitshfbc makes them.");
    return std::nullopt;
  }
  return Found(EngineKind::kNative, *program, data, reason);
}

/// The path for a Windows program that runs on another system.
std::string WindowsPath(const std::filesystem::path& path) {
  return "Z:" + ReplaceAll(PathText(path), "/", "\\");
}

std::string RunText(const EngineFinding& finding, const std::filesystem::path& executable,
                    EngineLauncher& launcher) {
  const std::string text = launcher.BatchText(executable);
  return finding.kind == EngineKind::kWine ? launcher.BatchText(finding.wine) + " " + text : text;
}

}  // namespace

std::filesystem::path EngineFolder(EngineChoice engine, EngineUse use) {
  if (engine == EngineChoice::kIonCap) return "IonCap";
  return use == EngineUse::kPoint ? "ITSHFBC2" : "ITSHFBC";
}

EngineFinding FindEngine(const EngineHost& host, const std::filesystem::path& program_folder,
                         EngineChoice engine, EngineUse use) {
  if (engine == EngineChoice::kNone) return {};
  const std::filesystem::path folder = program_folder / EngineFolder(engine, use);
  const std::filesystem::path expected = folder / ExecutableName(engine);
  const FileKind kind = KindOf(expected);
  const bool foreign = kind == FileKind::kWindowsProgram && !host.RunsWindowsPrograms();
  if (kind != FileKind::kNone && !foreign) return Found(EngineKind::kOwn, expected, folder, {});

  std::string reason;
  Say(reason, foreign ? PathText(expected) + " is a Windows program."
                      : "There is no " + PathText(expected) + ".");
  if (IsVoacap(engine)) {
    if (const auto native = FindNative(host, reason)) return *native;
  }
  if (foreign) {
    if (const auto wine = host.Wine()) {
      EngineFinding finding = Found(EngineKind::kWine, expected, folder, {});
      finding.can_run = true;
      finding.wine = *wine;
      return finding;
    }
    Say(reason, "There is no wine that could run it.");
  }
  if (KindOf(host.EstimateEngine()) != FileKind::kNone) {
    return Found(EngineKind::kEstimate, host.EstimateEngine(), {}, reason);
  }
  return Found(EngineKind::kOwn, expected, folder, {});
}

EngineChoice AutomaticEngine(const EngineHost& host, const std::filesystem::path& program_folder) {
  const EngineFinding voacap = FindEngine(host, program_folder, EngineChoice::kVoaCap);
  // An engine in the program folder may keep its data anywhere.
  const bool whole =
      voacap.kind == EngineKind::kOwn || MissingParts(EngineChoice::kVoaCap, voacap).empty();
  const bool works = voacap.can_run && voacap.kind != EngineKind::kEstimate && whole;
  return works ? EngineChoice::kVoaCap : EngineChoice::kIonCap;
}

bool IsEstimate(const EngineFinding& finding, const EngineHost& host) {
  if (finding.kind == EngineKind::kEstimate) return true;
  std::error_code error;
  const std::filesystem::path original = host.EstimateEngine();
  const std::uintmax_t size = std::filesystem::file_size(finding.executable, error);
  if (error || size != std::filesystem::file_size(original, error) || error) return false;
  std::ifstream copy(finding.executable, std::ios::binary);
  std::ifstream source(original, std::ios::binary);
  using Bytes = std::istreambuf_iterator<char>;
  return copy && source && std::equal(Bytes(copy), Bytes(), Bytes(source), Bytes());
}

std::string MissingParts(EngineChoice engine, const EngineFinding& finding) {
  const std::filesystem::path& data = finding.data;
  const bool needs_none =
      engine == EngineChoice::kIonCap || finding.kind == EngineKind::kEstimate || data.empty();
  if (needs_none) return {};
  std::string text;
  if (!IsFolder(data / "coeffs")) {
    Say(text,
        "Its coefficients are missing: there is no folder " + PathText(data / "coeffs") + ".");
  }
  const std::vector<std::string> antennas = ListAntennas(data / "antennas");
  const bool isotrope = std::any_of(antennas.begin(), antennas.end(), [](const std::string& file) {
    return EqualsIgnoringCase(file, kIsotropicFile);
  });
  if (!isotrope) {
    Say(text, "The antenna file " + std::string(kIsotropicFile) + " is missing in " +
                  PathText(data / "antennas") + ".");
  }
  return text;
}

std::string FindingText(const EngineFinding& finding) {
  const std::string path = PathText(finding.executable);
  if (!finding.exists) return "Not found; expected at " + path;
  if (!finding.can_run) return "Found, but it cannot be executed: " + path;
  switch (finding.kind) {
    case EngineKind::kOwn:
      return "Found: " + path;
    case EngineKind::kNative:
      return "Uses " + path + " with the data of " + PathText(finding.data) + ".";
    case EngineKind::kWine:
      return "Found: " + path + ", run by " + PathText(finding.wine);
    case EngineKind::kEstimate:
      break;
  }
  return "Uses the built-in estimate engine. " + finding.reason;
}

std::filesystem::path EngineExecutable(const EngineFinding& finding,
                                       const std::filesystem::path& folder,
                                       EngineLauncher& launcher) {
  if (finding.kind == EngineKind::kOwn || finding.kind == EngineKind::kWine) {
    const std::filesystem::path name = finding.executable.filename();
    return name == "ioncap.exe" ? folder / name : folder / "bin_win" / name;
  }
  return launcher.ShortPath(finding.executable);
}

std::string ItsCommand(const EngineFinding& finding, const std::filesystem::path& folder,
                       const std::string& deck, const std::string& results,
                       EngineLauncher& launcher) {
  const std::string program =
      RunText(finding, EngineExecutable(finding, folder, launcher), launcher);
  const std::string names = " " + deck + " " + results;
  if (finding.kind == EngineKind::kNative) {
    // Chart and point runs share its data, so give each its own run folder: their files must not
    // collide.
    return program + " -s " + launcher.BatchText("--run-dir=" + PathText(folder / "run")) + " " +
           launcher.BatchText(finding.data) + names;
  }
  const bool windows = finding.kind == EngineKind::kWine;
  const bool native_file = KindOf(finding.executable) == FileKind::kBinary;
  return program + (native_file ? " -s " : " SILENT ") +
         launcher.BatchText(windows ? std::filesystem::path(WindowsPath(folder)) : folder) + names;
}

std::string IonCapCommand(const EngineFinding& finding, const std::filesystem::path& driver,
                          EngineLauncher& launcher) {
  return RunText(finding, EngineExecutable(finding, driver.parent_path(), launcher), launcher) +
         " < " + launcher.BatchText(driver);
}

std::string DriverLine(const EngineFinding& finding, const std::filesystem::path& path,
                       const EngineLauncher& launcher) {
  const std::string text = launcher.DriverText(path);
  return finding.kind == EngineKind::kWine ? WindowsPath(PathFromText(text)) : text;
}

}  // namespace skyhop
