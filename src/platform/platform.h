#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "common/clock.h"
#include "common/instance_guard.h"
#include "common/machine_facts.h"
#include "common/settings_store.h"
#include "common/timekeeping.h"
#include "engine/engine_launcher.h"
#include "engine/engine_search.h"
#include "engine/run_lock.h"
#include "spaceweather/url_fetcher.h"

/// The operating system's services. `app/` is the only user; everybody else gets the interfaces.
namespace skyhop::platform {

[[nodiscard]] std::unique_ptr<SettingsStore> MakeSettingsStore();
[[nodiscard]] std::unique_ptr<Clock> MakeClock();
[[nodiscard]] std::unique_ptr<Timekeeping> MakeTimekeeping();
[[nodiscard]] std::unique_ptr<MachineFacts> MakeMachineFacts();
[[nodiscard]] std::unique_ptr<EngineLauncher> MakeEngineLauncher();
/// What this machine has for running engines, looked up anew at each question.
[[nodiscard]] std::unique_ptr<EngineHost> MakeEngineHost();
[[nodiscard]] std::unique_ptr<UrlFetcher> MakeUrlFetcher();

/// Has the console of a program without a window take UTF-8. Returns the program's arguments, its
/// name first, as UTF-8.
[[nodiscard]] std::vector<std::string> StartConsole(int argc, const char* const* argv);

/// The program's own folder: its band definitions, its error log, the engines' folders.
/// Throws the Errors of FileError when it cannot be created.
[[nodiscard]] std::filesystem::path ProgramFolder();

/// Puts the files that come with the program into the program folder: band definitions, the
/// beacons' locations and schedule and, as the engine of the "IonCap" folder, the estimate engine.
/// A file that the user changed or put there is never overwritten; one that this function placed is
/// brought up to date. Returns what went wrong, one text each; nothing when all is well.
[[nodiscard]] std::vector<std::string> FillProgramFolder(const std::filesystem::path& folder);

/// A file that is installed with the program's data, such as "icons/skyhop.svg".
[[nodiscard]] std::filesystem::path DataFile(const std::filesystem::path& name);

/// The page that the help command opens: "index.htm" in the program folder when the user has one
/// there, else the one that was installed with the program.
[[nodiscard]] std::filesystem::path HelpFile(const std::filesystem::path& program_folder);

/// Guards the program folder against a second instance, as long as the guard lives; whatever ends
/// the program frees it. A folder that cannot be written counts as one without another instance.
[[nodiscard]] std::unique_ptr<InstanceGuard> MakeInstanceGuard(
    const std::filesystem::path& program_folder);

/// Locks as LockRuns does.
[[nodiscard]] std::unique_ptr<RunLocker> MakeRunLocker(const std::filesystem::path& program_folder);

/// Holds the engine folders against other runs of the program, as long as the lock lives. Waits at
/// most `longest` for it; returns null when another program still holds it then. Throws the Errors
/// of FileError when the folder cannot be opened.
[[nodiscard]] std::unique_ptr<RunLock> LockRuns(const std::filesystem::path& program_folder,
                                                std::chrono::milliseconds longest);

}  // namespace skyhop::platform
