// Tests the program as a separate process, with a peer on its session bus.

#include <gio/gio.h>

#include <csignal>
#include <cstdlib>

#include "common/files.h"
#include "gui_fixture.h"
#include "started_program.h"

namespace skyhop::testing {
namespace {

/// A session bus for this test, and a connection to it.
class Bus {
 public:
  Bus() : bus_(g_test_dbus_new(G_TEST_DBUS_NONE)) {
    g_test_dbus_up(bus_);
    ::setenv("DISPLAY", display_.c_str(), 1);
    connection_ = g_dbus_connection_new_for_address_sync(
        g_test_dbus_get_bus_address(bus_),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
  }
  ~Bus() {
    g_clear_object(&connection_);
    g_test_dbus_stop(bus_);
    g_object_unref(bus_);
    ::setenv("DISPLAY", display_.c_str(), 1);
  }
  Bus(const Bus&) = delete;
  Bus& operator=(const Bus&) = delete;

  /// Returns whether Skyhop accepted the command.
  [[nodiscard]] bool Execute(const char* command) const {
    GVariant* const reply =
        g_dbus_connection_call_sync(connection_, "org.marlo.Skyhop", "/DDEServer", "org.marlo.Link",
                                    "Execute", g_variant_new("(s)", command), nullptr,
                                    G_DBUS_CALL_FLAGS_NO_AUTO_START, 1000, nullptr, nullptr);
    if (reply == nullptr) return false;
    g_variant_unref(reply);
    return true;
  }

 private:
  /// GLib removes DISPLAY from the environment when the bus starts and when it ends.
  std::string display_ = std::getenv("DISPLAY");
  GTestDBus* bus_;
  GDBusConnection* connection_ = nullptr;
};

class PeerOfTheProcess : public GuiTest {
 protected:
  std::unique_ptr<StartedProgram> StartProcess() {
    auto program = std::make_unique<StartedProgram>(SKYHOP_PROGRAM);
    EXPECT_TRUE(PumpUntil([&] { return program->HasWindow("Skyhop"); })) << "no window";
    return program;
  }
  void ExpectEnd(StartedProgram& program) {
    EXPECT_TRUE(PumpUntil([&] { return program.Ended(); }));
    EXPECT_EQ(program.Status(), 0);
    EXPECT_NE(Settings().find("IonCapLeft="), std::string::npos);
  }
  [[nodiscard]] std::string Log() const {
    return ReadFile(home_ / "ErrorLog.txt", std::size_t{1} << 20U);
  }
  /// Sends the sunspot number one byte per second, for ten minutes.
  void ServeSlowly() {
    HttpReply slow = {.pieces = {"HTTP/1.1 200 OK\r\nContent-Length: 600\r\n\r\n"},
                      .pause = std::chrono::seconds(1)};
    slow.pieces.resize(601, ".");
    server_.Serve("/ssn", slow);
    WriteSettings("[Configuration]\nDiagMode=True\nSSN=77\n");
  }

  Bus bus_;
};

TEST_F(PeerOfTheProcess, ShutsItDownWhileACommandShowsAMessage) {
  const auto program = StartProcess();
  ASSERT_TRUE(PumpUntil([&] { return bus_.Execute("004test"); }));
  // The command shows a message, because there is no DX station.
  ASSERT_TRUE(bus_.Execute("004predict"));
  ASSERT_TRUE(PumpUntil([&] { return program->Windows() == 2; }));
  ASSERT_TRUE(bus_.Execute("004iconify"));
  ASSERT_TRUE(PumpUntil([&] { return !program->HasWindow("Skyhop [0-9]"); }));
  ASSERT_TRUE(bus_.Execute("004activate"));
  ASSERT_TRUE(PumpUntil([&] { return program->HasWindow("Skyhop [0-9]"); }));
  ASSERT_TRUE(bus_.Execute("004shutdown"));
  ExpectEnd(*program);
}

TEST_F(PeerOfTheProcess, ShutsItDownWhileTheStartShowsAMessage) {
  server_.Serve("/ssn", Reply("404 Not Found", "gone"));
  const auto program = StartProcess();
  ASSERT_TRUE(PumpUntil([&] { return program->HasWindow("Skyhop Sunspot Number"); }));
  ASSERT_TRUE(bus_.Execute("004shutdown"));
  ExpectEnd(*program);
}

TEST_F(PeerOfTheProcess, ShutdownCancelsADownload) {
  ServeSlowly();
  const auto program = StartProcess();
  ASSERT_TRUE(PumpUntil([&] { return program->HasWindow("Skyhop .* - downloading SSN"); }));
  ASSERT_TRUE(bus_.Execute("004shutdown"));
  ExpectEnd(*program);
  EXPECT_NE(Log().find("downloading SSN: cancelled"), std::string::npos);
  EXPECT_EQ(Log().find("unable to download"), std::string::npos);
}

TEST_F(PeerOfTheProcess, EscCancelsADownload) {
  ServeSlowly();
  const auto program = StartProcess();
  ASSERT_TRUE(PumpUntil([&] { return program->HasWindow("Skyhop .* - downloading SSN"); }));
  ASSERT_TRUE(PumpUntil([&] {
    program->PressKey("Escape");
    return !program->HasWindow("Skyhop .* - downloading SSN");
  }));
  EXPECT_EQ(program->Windows(), 1U) << "no message";
  EXPECT_NE(Log().find("downloading SSN: cancelled"), std::string::npos);
  program->Send(SIGTERM);
  ExpectEnd(*program);
  EXPECT_NE(Settings().find("SSN=77"), std::string::npos);
}

}  // namespace
}  // namespace skyhop::testing
