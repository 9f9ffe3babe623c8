// Tests the window program as a separate process, with peers in separate processes.

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

#include "common/errors.h"
#include "common/files.h"
#include "common/text.h"
#include "desktop_world.h"
#include "link_peer_process.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using std::chrono::milliseconds;
using Texts = std::vector<std::string>;

/// Sets the settings of this machine's user aside while it lives, and restores them at its end.
class SettingsAside {
 public:
  SettingsAside() { Move(kOwn, kKept); }
  ~SettingsAside() {
    ::RegDeleteTreeW(HKEY_CURRENT_USER, kOwn);
    Move(kKept, kOwn);
  }
  SettingsAside(const SettingsAside&) = delete;
  SettingsAside& operator=(const SettingsAside&) = delete;

  static void Put(const wchar_t* section, const wchar_t* key, DWORD type, const void* bytes,
                  std::size_t size) {
    const std::wstring path = std::wstring(kOwn) + L"\\" + section;
    ::RegSetKeyValueW(HKEY_CURRENT_USER, path.c_str(), key, type, bytes, static_cast<DWORD>(size));
  }
  static std::wstring Text(const wchar_t* section, const wchar_t* key) {
    const std::wstring path = std::wstring(kOwn) + L"\\" + section;
    wchar_t text[100] = {};
    DWORD size = sizeof text;
    const LSTATUS status =
        ::RegGetValueW(HKEY_CURRENT_USER, path.c_str(), key, RRF_RT_REG_SZ, nullptr, text, &size);
    return status == ERROR_SUCCESS ? text : L"(none)";
  }

 private:
  static constexpr const wchar_t* kOwn = L"Software\\Marlo\\Skyhop";
  static constexpr const wchar_t* kKept = L"Software\\Marlo\\Skyhop kept for a test";

  static void Move(const wchar_t* from, const wchar_t* to) {
    HKEY target = nullptr;
    if (::RegOpenKeyW(HKEY_CURRENT_USER, from, &target) != ERROR_SUCCESS) return;
    ::RegCloseKey(target);
    ::RegCreateKeyW(HKEY_CURRENT_USER, to, &target);
    ::RegCopyTreeW(HKEY_CURRENT_USER, from, target);
    ::RegCloseKey(target);
    ::RegDeleteTreeW(HKEY_CURRENT_USER, from);
  }
};

/// A window program that runs beside the test. The destructor kills it.
class StartedProgram {
 public:
  explicit StartedProgram(const std::filesystem::path& program) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    std::wstring command = L"\"" + program.native() + L"\"";
    EXPECT_TRUE(::CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0,
                                 nullptr, program.parent_path().c_str(), &start, &process_));
  }
  ~StartedProgram() {
    ::TerminateProcess(process_.hProcess, 1);
    ::CloseHandle(process_.hProcess);
    ::CloseHandle(process_.hThread);
  }
  StartedProgram(const StartedProgram&) = delete;
  StartedProgram& operator=(const StartedProgram&) = delete;

  [[nodiscard]] bool Ended() const {
    return ::WaitForSingleObject(process_.hProcess, 0) == WAIT_OBJECT_0;
  }
  [[nodiscard]] DWORD Status() const {
    DWORD status = 0;
    ::GetExitCodeProcess(process_.hProcess, &status);
    return status;
  }
  /// Its visible window with a title that begins so, null if there is none.
  [[nodiscard]] HWND Window(const wchar_t* title) const {
    Search search{process_.dwProcessId, title, nullptr};
    ::EnumWindows(IsSought, reinterpret_cast<LPARAM>(&search));
    return search.found;
  }

  /// The texts of all its controls, one per line.
  [[nodiscard]] std::string Texts() const {
    std::string texts;
    if (const HWND window = Window(L"Skyhop")) {
      ::EnumChildWindows(window, AddText, reinterpret_cast<LPARAM>(&texts));
    }
    return texts;
  }

 private:
  static BOOL CALLBACK AddText(HWND control, LPARAM texts_address) {
    wchar_t text[200] = {};
    DWORD_PTR length = 0;
    ::SendMessageTimeoutW(control, WM_GETTEXT, 200, reinterpret_cast<LPARAM>(text),
                          SMTO_ABORTIFHUNG, 1000, &length);
    if (length > 0) *reinterpret_cast<std::string*>(texts_address) += PathText(text) + "\n";
    return TRUE;
  }
  struct Search {
    DWORD process;
    std::wstring title;
    HWND found;
  };
  static BOOL CALLBACK IsSought(HWND window, LPARAM search_address) {
    auto& search = *reinterpret_cast<Search*>(search_address);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    wchar_t title[200] = {};
    ::GetWindowTextW(window, title, 200);
    if (process != search.process || !::IsWindowVisible(window) ||
        !std::wstring(title).starts_with(search.title)) {
      return TRUE;
    }
    search.found = window;
    return FALSE;
  }

  PROCESS_INFORMATION process_{};
};

/// The programs, installed in a separate folder.
class ProgramWindowsTest : public ::testing::Test {
 protected:
  ProgramWindowsTest() {
    const std::filesystem::path built = PathFromText(SKYHOP_PREDICT).parent_path();
    for (const char* name : {"skyhop.exe", "skyhop-estimate.exe"}) {
      std::filesystem::copy_file(built / name, folder_ / name);
    }
    std::filesystem::copy(built / "data", folder_ / "data",
                          std::filesystem::copy_options::recursive);
    gleaner_.Serve("DDEClient", {});
    gleaner_.Serve("DDEServer", {});
    gleaner_.Serve("SpotDatabaseUI", {{"SFI", "150"}, {"A", "5"}, {"K", "2"}});
    tessera_.Serve("DDEServer", {});
    tessera_.Serve("TesseraMain", {{"SelectedLatitude", "51 30' 0\" N"},
                                   {"SelectedLongitude", "0 7' 0\" W"},
                                   {"Country", "England"}});
    tessera_.Serve("TesseraConfig", {{"Latitude", "40 30' 0\" N"}, {"Longitude", "74 15' 0\" W"}});
    launcher_.Serve("DDEClient", {});
    // The download at its start reads this file.
    WriteFile(folder_ / "ssn.json",
              "[{\"time-tag\": \"" + Month() + "\", \"predicted_ssn\": 105, \"high_ssn\": 130}]");
    const std::wstring address =
        L"file:///" + PathFromText(ReplaceAll(PathText(folder_ / "ssn.json"), "\\", "/")).native();
    SettingsAside::Put(L"Configuration", L"SSNURL", REG_SZ, address.c_str(),
                       (address.size() + 1) * sizeof(wchar_t));
  }

  static std::string Month() {
    SYSTEMTIME now{};
    ::GetSystemTime(&now);
    char text[16] = {};
    std::snprintf(text, sizeof text, "%04u-%02u", now.wYear, now.wMonth);
    return text;
  }
  void Start() {
    program_.emplace(folder_ / "skyhop.exe");
    ASSERT_TRUE(world_.RunUntil([&] { return program_->Window(L"Skyhop") != nullptr; }));
    // On a busy machine the program stops waiting before a peer can answer. The test makes it try
    // again.
    bool shown = KnowsStations();
    for (int attempt = 0; attempt < 8 && !shown; ++attempt) {
      tessera_.Execute("Skyhop", "DDEClient", "003start");
      shown = KnowsStations();
    }
    ASSERT_TRUE(shown) << program_->Texts();
  }
  /// Waits until the window's fields show both stations, for longer than any linking takes.
  bool KnowsStations() {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(12);
    bool shown = false;
    while (!shown && std::chrono::steady_clock::now() < end) {
      world_.RunShortly();
      const std::string texts = program_->Texts();
      shown = std::ranges::all_of(
          std::array{"51 30' 0\" N", "0 7' 0\" W", "40 30' 0\" N", "74 15' 0\" W"},
          [&](const char* text) { return texts.find(text) != std::string::npos; });
    }
    return shown;
  }
  void Command(const std::string& command) { gleaner_.Execute("Skyhop", "DDEServer", command); }
  /// The content of a file in the program's folder; empty if there is none.
  [[nodiscard]] std::string Content(const char* name) const {
    try {
      return ReadFile(folder_ / name, 1 << 20);
    } catch (const Error&) {
      return {};
    }
  }
  ::testing::AssertionResult PredictionAppears() {
    if (world_.RunUntil([&] {
          return Content("IonCap/results.txt").find("END OF RUN") != std::string::npos;
        })) {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << "ErrorLog.txt: " << Content("ErrorLog.txt")
           << "script.txt: " << Content("IonCap/script.txt").substr(0, 400)
           << "ioncap.bat: " << Content("IonCap/ioncap.bat")
           << "\nthe window: " << program_->Texts();
  }
  void Shutdown() {
    Command("004shutdown");
    EXPECT_TRUE(world_.RunUntil([&] { return program_->Ended(); }));
    EXPECT_EQ(program_->Status(), 0U);
  }

  SettingsAside settings_;
  TemporaryFolder folder_{"program folder"};
  DesktopWorld world_;
  LinkPeerProcess gleaner_{"Gleaner"};
  LinkPeerProcess tessera_{"Tessera"};
  LinkPeerProcess launcher_{"MarloLauncher"};
  std::optional<StartedProgram> program_;
};

TEST_F(ProgramWindowsTest, PeersGiveItWhatAPredictionNeedsAndAskForIt) {
  Start();
  Command("000hello");
  Command("004newwwv<d:1>0<f:3>144<a:1>0<k:1>3");
  Command("004predsp");
  EXPECT_TRUE(PredictionAppears());
  const std::string script = Content("IonCap/script.txt");
  EXPECT_EQ(script.substr(0, 200).find("CIRCUIT   04050N    07425W    05150N    00012W"), 0U)
      << script;
  EXPECT_NE(script.find("SUNSPOT   10500"), std::string::npos) << script;
  const HWND window = program_->Window(L"Skyhop");
  Command("004iconify");
  EXPECT_TRUE(world_.RunUntil([&] { return ::IsIconic(window) != FALSE; }));
  Shutdown();
  world_.RunUntil([&] { return launcher_.Executed().size() >= 2; });
  EXPECT_EQ(launcher_.Executed(), (Texts{"005start", "005stop"}));
  EXPECT_EQ(Content("ErrorLog.txt"), "");
}

TEST_F(ProgramWindowsTest, AnEngineThatHangsDoesNotKeepItFromClosing) {
  std::filesystem::create_directory(folder_ / "IonCap");
  std::filesystem::copy_file(PathFromText(SKYHOP_IDLE), folder_ / "IonCap/ioncap.exe");
  Start();
  Command("004predict");
  ASSERT_TRUE(world_.RunUntil([&] { return !Content("IonCap/ioncap.bat").empty(); }));
  world_.RunShortly();
  Command("004setpower77");
  Command("004predict");
  Shutdown();
  EXPECT_EQ(SettingsAside::Text(L"Configuration", L"Power"), L"77");
}

TEST_F(ProgramWindowsTest, SettingsThatAreNoTextsCountAsMissingAndAreReplaced) {
  SettingsAside::Put(L"Configuration", L"Power", REG_BINARY, "abc", 3);
  SettingsAside::Put(L"Configuration", L"TakeoffAngle", REG_MULTI_SZ, L"5\0\0", 8);
  Start();
  Command("004predict");
  EXPECT_TRUE(PredictionAppears());
  Shutdown();
  EXPECT_EQ(SettingsAside::Text(L"Configuration", L"Power"), L"1500");
  EXPECT_EQ(SettingsAside::Text(L"Configuration", L"TakeoffAngle"), L"3");
}

TEST_F(ProgramWindowsTest, FilesThatOthersHoldOpenCostNoMoreThanThemselves) {
  std::vector<HANDLE> held;
  for (const char* name : {"ErrorLog.txt", "DefaultBands.txt"}) {
    held.push_back(::CreateFileW((folder_ / name).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                 CREATE_ALWAYS, 0, nullptr));
  }
  Start();
  Command("004predict");
  EXPECT_TRUE(PredictionAppears());
  Shutdown();
  for (const HANDLE handle : held) ::CloseHandle(handle);
}

}  // namespace
}  // namespace skyhop::testing
