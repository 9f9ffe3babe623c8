#include "ui/shared/window_placement.h"

#include <gtest/gtest.h>

#include <climits>
#include <ostream>

#include "common/program.h"
#include "support/diagnostics_fixture.h"

namespace skyhop {

static std::ostream& operator<<(std::ostream& out, const WindowPlacement& placement) {
  return out << placement.left << ',' << placement.top << ' ' << placement.width << 'x'
             << placement.height << " state " << static_cast<int>(placement.state);
}

namespace testing {
namespace {

using State = WindowPlacement::State;

constexpr Monitor kMain{0, 0, 1920, 1080};
constexpr Monitor kRight{1920, 0, 3200, 1024};
constexpr Monitor kLeft{-1280, -200, 0, 824};
const std::vector<Monitor> kThree = {kMain, kRight, kLeft};
constexpr WindowPlacement kCurrent{100, 50, 800, 600, State::kNormal};

class WindowPlacementTest : public ::testing::Test {
 protected:
  void Store(const std::string& key, const std::string& value) {
    store_.SaveSetting(kProductName, "Windows", key, value);
  }
  WindowPlacement Restore(const std::vector<Monitor>& monitors = kThree) {
    return RestoreWindowPosition("IonCap", kCurrent, monitors, settings_);
  }

  LoggedDiagnostics log_;
  MemorySettingsStore store_;
  Common::Settings settings_{store_, log_.diagnostics};
};

TEST_F(WindowPlacementTest, IsRestoredAsSaved) {
  const WindowPlacement placements[] = {{300, 200, 900, 700, State::kNormal},
                                        {-1000, -150, 500, 400, State::kNormal},
                                        {2000, 10, 900, 700, State::kMaximized}};
  Store("DualMonitor", "True");
  for (const WindowPlacement& placement : placements) {
    SaveWindowPosition("IonCap", placement, settings_, log_.diagnostics);
    SaveWindowPosition("IoncapConfig", kCurrent, settings_, log_.diagnostics);
    EXPECT_EQ(Restore(), placement);
  }
  EXPECT_EQ(store_.Read(kProductName, "Windows", "IonCapLeft", ""), "2000");
  EXPECT_EQ(store_.Read(kProductName, "Windows", "IonCapWindowState", ""), "2");
}

TEST_F(WindowPlacementTest, IsTheCurrentOneWhenNothingUsableIsStored) {
  EXPECT_EQ(Restore(), kCurrent);
  for (const char* key : {"Left", "Top", "Width", "Height", "WindowState"}) {
    for (const char* value : {"", "wide", "99999999999999"}) {
      Store(std::string("IonCap") + key, value);
      EXPECT_EQ(Restore(), kCurrent) << key << ' ' << value;
    }
  }
  for (const char* size : {"0", "-5", "-2147483648"}) {
    Store("IonCapWidth", size);
    Store("IonCapHeight", size);
    EXPECT_EQ(Restore(), kCurrent) << size;
  }
}

TEST_F(WindowPlacementTest, NeverStartsMinimised) {
  const struct {
    const char* stored;
    State state;
  } cases[] = {{"0", State::kNormal},
               {"1", State::kNormal},
               {"2", State::kMaximized},
               {"7", State::kNormal}};
  for (const auto& c : cases) {
    Store("IonCapWindowState", c.stored);
    EXPECT_EQ(Restore().state, c.state) << c.stored;
  }
}

TEST_F(WindowPlacementTest, StaysOnTheMainMonitorUnlessDualMonitorIsSet) {
  Store("IonCapLeft", "2000");
  EXPECT_EQ(Restore(), (WindowPlacement{1120, 50, 800, 600, State::kNormal}));
  Store("DualMonitor", "True");
  EXPECT_EQ(Restore(), (WindowPlacement{2000, 50, 800, 600, State::kNormal}));
  EXPECT_EQ(Restore({kMain}), (WindowPlacement{1120, 50, 800, 600, State::kNormal}))
      << "the second monitor is gone";
  EXPECT_EQ(Restore({}), (WindowPlacement{2000, 50, 800, 600, State::kNormal}));
}

TEST_F(WindowPlacementTest, LogsAFailureToSave) {
  store_.save_error = 75;
  SaveWindowPosition("IonCap", kCurrent, settings_, log_.diagnostics);
  ASSERT_EQ(log_.errors.size(), 1U);
  EXPECT_NE(log_.errors[0].find("Common.SaveWindowPosition"), std::string::npos);
  EXPECT_TRUE(store_.values.empty());
}

TEST(OnScreen, PutsAWindowOnTheNearestMonitor) {
  const struct {
    const char* what;
    WindowPlacement stored;
    WindowPlacement expected;
  } cases[] = {
      {"at the very corner", {1120, 480, 800, 600}, {1120, 480, 800, 600}},
      {"partly above and left of all", {-1400, -300, 400, 300}, {-1280, -200, 400, 300}},
      {"mostly right", {1800, 100, 800, 600}, {1920, 100, 800, 600}},
      {"mostly in the middle", {-100, 100, 800, 600}, {0, 100, 800, 600}},
      {"below the left one", {-900, 900, 300, 200}, {-900, 624, 300, 200}},
      {"larger than its monitor", {1900, -50, 5000, 4000}, {1920, 0, 1280, 1024}},
      {"as far as numbers go", {INT_MAX, INT_MAX, INT_MAX, 20}, {1920, 1004, 1280, 20}},
      {"as far the other way", {INT_MIN, INT_MIN, 40, 20}, {-1280, -200, 40, 20}},
      {"without a size", {500, 500, 0, -3}, {500, 500, 1, 1}},
  };
  for (const auto& c : cases) EXPECT_EQ(OnScreen(c.stored, kThree), c.expected) << c.what;
}

TEST(OnScreen, IgnoresMonitorsWithoutExtent) {
  const Monitor off{5000, 5000, 5000, 5000};
  const WindowPlacement window{4900, 4900, 200, 100};
  EXPECT_EQ(OnScreen(window, std::vector{off, kMain}), (WindowPlacement{1720, 980, 200, 100}));
  EXPECT_EQ(OnScreen(window, std::vector{off}), window);
}

}  // namespace
}  // namespace testing
}  // namespace skyhop
