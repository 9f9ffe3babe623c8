#pragma once

#include <map>
#include <string>

#include "support/fake_links.h"
#include "support/link_recorders.h"

namespace skyhop::testing {

/// A program of the suite on fake links, with topics of items.
struct FakeApplication {
  FakeApplication(FakeLinkBus& bus, const std::string& name,
                  const std::map<std::string, std::map<std::string, std::string>>& served)
      : links(bus, name) {
    for (const auto& [topic, items] : served) {
      topics[topic].items = items;
      links.Serve(topic, topics[topic]);
    }
  }

  std::map<std::string, RecordingTopic> topics;
  FakeLinks links;
};

}  // namespace skyhop::testing
