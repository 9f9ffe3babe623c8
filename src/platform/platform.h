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

/// The operating system's services. Only `app/` calls these functions; all other folders use the
/// interfaces.
namespace skyhop::platform {

[[nodiscard]] std::unique_ptr<SettingsStore> MakeSettingsStore();
[[nodiscard]] std::unique_ptr<Clock> MakeClock();
[[nodiscard]] std::unique_ptr<Timekeeping> MakeTimekeeping();
[[nodiscard]] std::unique_ptr<MachineFacts> MakeMachineFacts();
[[nodiscard]] std::unique_ptr<EngineLauncher> MakeEngineLauncher();
/// Finds the programs with which this machine can run engines. Every call looks for them again.
[[nodiscard]] std::unique_ptr<EngineHost> MakeEngineHost();
[[nodiscard]] std::unique_ptr<UrlFetcher> MakeUrlFetcher();

/// Makes the console of a program without a window accept UTF-8. Returns the program's arguments as
/// UTF-8, its name first.
[[nodiscard]] std::vector<std::string> StartConsole(int argc, const char* const* argv);

/// The program's own folder: it holds the band definitions, the error log and the engines' folders.
/// Throws the Errors of FileError when it cannot be created.
[[nodiscard]] std::filesystem::path ProgramFolder();

/// Puts the shipped files into the program folder: band definitions, the beacons' locations and
/// schedule and, as the engine of the "IonCap" folder, the estimate engine. Never overwrites a file
/// that the user changed or put there; updates a file that this function placed. Returns one text
/// per problem, nothing if there is none.
[[nodiscard]] std::vector<std::string> FillProgramFolder(const std::filesystem::path& folder);

/// A file that is installed with the program's data, such as "icons/skyhop.svg".
[[nodiscard]] std::filesystem::path DataFile(const std::filesystem::path& name);

/// The page that the help command opens: the user's own "index.htm" in the program folder if it
/// exists, else the installed one.
[[nodiscard]] std::filesystem::path HelpFile(const std::filesystem::path& program_folder);

/// Guards the program folder against a second instance while the guard lives. The guard ends with
/// the program, even after a crash. A folder that cannot be locked is treated as one without
/// another instance.
[[nodiscard]] std::unique_ptr<InstanceGuard> MakeInstanceGuard(
    const std::filesystem::path& program_folder);

/// Locks as LockRuns does.
[[nodiscard]] std::unique_ptr<RunLocker> MakeRunLocker(const std::filesystem::path& program_folder);

/// Locks the engine folders against other runs of the program while the lock lives. Waits at most
/// `longest`; returns null if another program still holds the lock then. Throws the Errors of
/// FileError if the folder cannot be opened.
[[nodiscard]] std::unique_ptr<RunLock> LockRuns(const std::filesystem::path& program_folder,
                                                std::chrono::milliseconds longest);

}  // namespace skyhop::platform
