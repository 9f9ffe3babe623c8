#include "interop/snr_answers.h"

#include <gtest/gtest.h>

#include "support/diagnostics_fixture.h"
#include "support/fake_links.h"
#include "support/link_recorders.h"

namespace skyhop::testing {
namespace {

TEST(SNRAnswers, ReachTheCommandTopicOfTheRequester) {
  LoggedDiagnostics log;
  FakeLinkBus bus;
  FakeLinks skyhop(bus, "Skyhop");
  LinkedSNRAnswers answers(skyhop, log.diagnostics);
  const std::pair<std::int16_t, const char*> peers[] = {
      {std::int16_t{0}, "TunewardClassic"}, {std::int16_t{1}, "Archivo"},
      {std::int16_t{2}, "Quester"},         {std::int16_t{3}, "Tessera"},
      {std::int16_t{4}, "Gleaner"},         {std::int16_t{6}, "Chirpa"}};
  for (const auto& [role, name] : peers) {
    FakeLinks peer(bus, name);
    RecordingTopic topic;
    peer.Serve("DDEServer", topic);
    answers.Send(role, "<freq:2>14");
    bus.Run();
    EXPECT_EQ(topic.executed, std::vector<std::string>{"005snr<freq:2>14"}) << name;
  }
  EXPECT_TRUE(log.errors.empty());
}

TEST(SNRAnswers, AreDroppedWhenTheRequesterIsNotRunning) {
  LoggedDiagnostics log;
  log.diagnostics.SetDebug(true);
  FakeLinkBus bus;
  FakeLinks skyhop(bus, "Skyhop");
  LinkedSNRAnswers answers(skyhop, log.diagnostics);
  answers.Send(4, "x");
  EXPECT_NE(log.debug.back().find("cannot answer Gleaner"), std::string::npos);
  for (const std::int16_t role : {std::int16_t{-1}, std::int16_t{7}}) {
    answers.Send(role, "x");
    EXPECT_NE(log.debug.back().find("no application has the role"), std::string::npos);
  }
  EXPECT_TRUE(log.errors.empty());
}

}  // namespace
}  // namespace skyhop::testing
