#include "interop/dde_server.h"

#include <gtest/gtest.h>

#include "interop/dde_server_module.h"
#include "support/diagnostics_fixture.h"
#include "support/fake_links.h"

namespace skyhop::testing {
namespace {

using Lines = std::vector<std::string>;

std::string PathText(const std::optional<bool>& short_path) {
  if (!short_path) return "any";
  return *short_path ? "short" : "long";
}

/// Records the calls that the server makes.
class Program : public CommandTarget,
                public SNRService,
                public DDECommon::Window,
                public DDECommon::OpenWindows {
 public:
  void SetShutdownTrigger() override { done.emplace_back("shutdown"); }
  void ResetWindows(std::int32_t value) override {
    done.push_back("reset " + std::to_string(value));
  }
  void SetSpaceWeather(const std::string& flux, const std::string& k_index) override {
    done.push_back("flux " + flux + " k " + k_index);
  }
  void SetTransmitterPower(const std::string& watts) override { done.push_back("power " + watts); }
  void PredictForPeer(const PeerRequest& request, const std::string& argument) override {
    done.push_back(Told(request) + " path, argument " + argument);
    if (during_prediction) std::exchange(during_prediction, {})();
  }
  void FreqPredictForPeer(const PeerRequest& request, const std::string& frequency,
                          const std::string& mode, const std::string& snr) override {
    done.push_back(Told(request) + " path, " + frequency + " " + mode + " " + snr);
  }
  [[nodiscard]] std::string ValidatedSNR(const std::string& snr) override { return "v" + snr; }
  void PredictSNR(const SNRRequest& request) override {
    done.push_back("snr for " + std::to_string(request.sender) + ": " + request.mode + " " +
                   request.snr + " " + request.fourth + " " + request.first);
  }
  void Minimise() override { done.emplace_back("minimise"); }
  void Activate() override { done.emplace_back("activate"); }
  [[nodiscard]] std::vector<Window*> All() override { return {this, this}; }

  Lines done;
  std::function<void()> during_prediction;

 private:
  static std::string Told(const PeerRequest& request) {
    return (request.mark_as_peers ? "marked, " : "") + PathText(request.short_path);
  }
};

class DDEServerTest : public ::testing::Test {
 protected:
  Lines Execute(const std::string& command) {
    program_.done.clear();
    server_.Execute(command);
    return program_.done;
  }

  LoggedDiagnostics log_;
  Program program_;
  DDECommon::Records records_{log_.diagnostics};
  DDEServer server_{{program_, program_, program_, program_, records_, log_.diagnostics}};
};

TEST_F(DDEServerTest, CarriesOutEachCommand) {
  const struct {
    const char* command;
    Lines done;
  } cases[] = {
      {"005test", {}},
      {"005TEST", {}},
      {"000hello", {}},
      {"000", {}},
      {"004shutdown", {"shutdown"}},
      {"004Iconify", {"minimise", "minimise"}},
      {"004activate", {"activate"}},
      {"004resetwindows 2", {"reset 2"}},
      {"004newwwv<a:4>1234<sfi:3>150<b:0><k:1>3", {"flux 150 k 3"}},
      {"004newwwv", {"flux  k "}},
      {"004setpower 100 ", {"power 100"}},
      {"000predict", {"marked, any path, argument 0"}},
      {"000predict  7 ", {"marked, any path, argument 7"}},
      {"000predsp", {"marked, short path, argument 0"}},
      {"000PREDLP9", {"marked, long path, argument 9"}},
      {"000predfmp<f:5>14074<m:3>ft8<p:1>S<s:2>10<o:1>D", {"marked, short path, 14074 FT8 v10"}},
      {"000predfmp<f:5>14074<m:3>psk<p:1>s<s:2>10<o:1>d", {"long path, 14074 PSK31 v10"}},
      {"000predfmp<f:5>14074", {"long path, 14074  v"}},
      {"003reqsnr<f:5>14074<m:3>Psk<r:2>24<x:3>abc", {"snr for 3: PSK31 v24 abc 14074"}},
      // The server uses the first word that fits, with any text behind it.
      {"000tester", {}},
      {"000predictsp", {"marked, any path, argument sp"}},
      {"000pred", {}},
      {"  3shutdown", {"shutdown"}},
  };
  for (const auto& [command, done] : cases) {
    EXPECT_EQ(Execute(command), done) << command;
    EXPECT_EQ(log_.debug.front(), "DDEServer.Form_LinkExecute: " + std::string(command));
    log_.debug.clear();
  }
  EXPECT_TRUE(log_.errors.empty());
}

TEST_F(DDEServerTest, ReportsTextThatIsNotACommand) {
  const std::pair<const char*, int> cases[] = {{"", errors::kTypeMismatch},
                                               {"1", errors::kTypeMismatch},
                                               {"12", errors::kTypeMismatch},
                                               {"abcshutdown", errors::kTypeMismatch},
                                               {"shutdown", errors::kTypeMismatch},
                                               {"\xFF\xFE\xFDshutdown", errors::kTypeMismatch},
                                               {"1e9shutdown", errors::kOverflow},
                                               {"005resetwindows", errors::kTypeMismatch},
                                               {"005resetwindowsx", errors::kTypeMismatch},
                                               {"005resetwindows3e9", errors::kOverflow}};
  for (const auto& [command, number] : cases) {
    EXPECT_EQ(Execute(command), Lines()) << command;
    ASSERT_FALSE(log_.errors.empty()) << command;
    EXPECT_EQ(log_.errors.back().find("program error " + std::to_string(number) +
                                      " in module DDEServer.Form_LinkExecute"),
              0U)
        << log_.errors.back();
    log_.errors.clear();
  }
}

TEST_F(DDEServerTest, DelaysCommandsThatArriveWithinAnother) {
  program_.during_prediction = [this] {
    for (const char* command :
         {"004setpower5", "000predict", "000predict", "004setpower6", "004setpower5"}) {
      server_.Execute(command);
    }
    EXPECT_EQ(program_.done, Lines{"marked, any path, argument 1"});
  };
  EXPECT_EQ(Execute("000predict1"), (Lines{"marked, any path, argument 1", "power 5",
                                           "marked, any path, argument 0", "power 6", "power 5"}))
      << "what follows its own like is dropped, what sets something anew is not";
}

TEST_F(DDEServerTest, CarriesOutCommandsWithoutInputsWithinAnother) {
  program_.during_prediction = [this] {
    for (const char* command :
         {"004setpower5", "004test", "004Activate", "004iconify", "004shutdown", "x", "004"}) {
      server_.Execute(command);
    }
    EXPECT_EQ(program_.done, (Lines{"marked, any path, argument 1", "activate", "minimise",
                                    "minimise", "shutdown"}));
  };
  EXPECT_EQ(Execute("000predict1").back(), "power 5");
  EXPECT_EQ(log_.errors.size(), 1U) << "the text without a role";
}

TEST_F(DDEServerTest, LimitsTheNumberOfWaitingCommands) {
  program_.during_prediction = [this] {
    for (int i = 0; i < 10000; ++i) server_.Execute("000predict" + std::to_string(i));
  };
  EXPECT_EQ(Execute("000predict").size(), 1 + DDEServer::kMostWaiting);
  EXPECT_EQ(Execute("000predict").size(), 1U) << "the queue is empty again";
}

TEST(DDEServerModuleTest, AnnouncesStartAndEnd) {
  LoggedDiagnostics log;
  FakeLinkBus bus;
  FakeLinks links(bus, "Skyhop");
  FakeLinks gleaner(bus, "Gleaner");
  FakeLinks launcher(bus, "MarloLauncher");
  Program program;
  DDECommon::Records records(log.diagnostics);
  DDEServer server({program, program, program, program, records, log.diagnostics});
  DDEServerModule::Announcer announcer(links, server, log.diagnostics);
  DDEServer topic({program, program, program, program, records, log.diagnostics});
  for (FakeLinks* peer : {&gleaner, &launcher}) peer->Serve("DDEClient", topic);

  announcer.AcknowledgeLauncher();
  announcer.Initialize();
  EXPECT_EQ(links.connects,
            (Lines{"MarloLauncher|DDEClient", "Gleaner|DDEClient", "MarloTest|DDEClient",
                   "Tessera|DDEClient", "Chirpa|DDEClient", "Archivo|DDEClient"}));
  EXPECT_EQ(links.sent, (Lines{"MarloLauncher|DDEClient 005start", "Gleaner|DDEClient 005start"}));
  EXPECT_EQ(bus.applications.count("Skyhop"), 1U);
  links.sent.clear();
  announcer.Terminate();
  EXPECT_EQ(links.sent, Lines{"MarloLauncher|DDEClient 005stop"});
  EXPECT_TRUE(log.errors.empty());

  links.problem = "there is no session bus";
  links.connects.clear();
  announcer.AcknowledgeLauncher();
  announcer.Initialize();
  EXPECT_TRUE(links.connects.empty());
  EXPECT_EQ(log.debug.back(), "   no links with other programs: there is no session bus");
  EXPECT_TRUE(log.errors.empty());
}

}  // namespace
}  // namespace skyhop::testing
