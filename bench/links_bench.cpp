// Executes commands of one client over a separate session bus.

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <thread>

#include "common/clock.h"
#include "common/diagnostics.h"
#include "interop/dde_server.h"
#include "platform/linux/dbus_links.h"
#include "support/fakes.h"
#include "support/temporary_folder.h"

namespace skyhop {
namespace {

/// Ignores the commands.
class Nobody : public CommandTarget,
               public SNRService,
               public DDECommon::Window,
               public DDECommon::OpenWindows {
 public:
  void SetShutdownTrigger() override {}
  void ResetWindows(std::int32_t) override {}
  void SetSpaceWeather(const std::string&, const std::string&) override {}
  void SetTransmitterPower(const std::string&) override {}
  void PredictForPeer(const PeerRequest&, const std::string&) override {}
  void FreqPredictForPeer(const PeerRequest&, const std::string&, const std::string&,
                          const std::string&) override {}
  [[nodiscard]] std::string ValidatedSNR(const std::string& snr) override { return snr; }
  void PredictSNR(const SNRRequest&) override {}
  void Minimise() override {}
  void Activate() override {}
  [[nodiscard]] std::vector<Window*> All() override { return {}; }
};

/// Executes commands one after another and waits for each answer, like a simple client.
void ExecuteInTurn(const std::string& command, std::atomic<std::int64_t>& answered,
                   const std::atomic<bool>& stop) {
  const platform::GObjectPointer<GDBusConnection> connection(g_dbus_connection_new_for_address_sync(
      std::getenv("DBUS_SESSION_BUS_ADDRESS"),
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
      nullptr, nullptr, nullptr));
  while (!stop) {
    GVariant* const reply = g_dbus_connection_call_sync(
        connection.get(), "org.marlo.Skyhop", "/DDEServer", "org.marlo.Link", "Execute",
        g_variant_new("(s)", command.c_str()), nullptr, G_DBUS_CALL_FLAGS_NONE, 1000, nullptr,
        nullptr);
    if (reply == nullptr) std::abort();
    g_variant_unref(reply);
    ++answered;
  }
}

void ExecutesOfOneClient(benchmark::State& state) {
  GTestDBus* const bus = g_test_dbus_new(G_TEST_DBUS_NONE);
  g_test_dbus_up(bus);
  {
    const testing::TemporaryFolder folder;
    testing::FakeClock clock;
    testing::FakeMachineFacts facts;
    Diagnostics diagnostics(folder.Path(), clock, facts);
    Nobody nobody;
    DDECommon::Records records(diagnostics);
    DDEServer server({nobody, nobody, nobody, nobody, records, diagnostics});
    platform::DBusLinks links("Skyhop");
    links.Serve("DDEServer", server);
    std::atomic<std::int64_t> answered = 0;
    std::atomic<bool> stop = false;
    std::thread client([&] { ExecuteInTurn("004newwwv<d:0><f:3>150<a:0><k:1>2", answered, stop); });
    for ([[maybe_unused]] auto _ : state) {
      const std::int64_t before = answered;
      // Wait without spinning: client and bus need the processor too.
      while (answered == before) g_main_context_iteration(nullptr, TRUE);
    }
    stop = true;
    for (int i = 0; i < 100; ++i) g_main_context_iteration(nullptr, FALSE);
    std::atomic<bool> joined = false;
    std::thread joiner([&] {
      client.join();
      joined = true;
    });
    while (!joined) g_main_context_iteration(nullptr, FALSE);
    joiner.join();
    state.SetItemsProcessed(answered);
  }
  g_test_dbus_down(bus);
  g_object_unref(bus);
}
BENCHMARK(ExecutesOfOneClient)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
}  // namespace skyhop
