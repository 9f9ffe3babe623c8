#pragma once

#include <map>
#include <string>
#include <vector>

#include "ui/spaceweather/conditions_view.h"
#include "ui/spaceweather/forecast_view.h"

namespace skyhop::testing {

/// The state of a side window: visibility and place.
template <class View>
class FakeWindow : public View {
 public:
  void CreateControls() override {}
  void ShowWindow() override { visible = true; }
  void HideWindow() override { visible = false; }
  [[nodiscard]] bool Visible() const override { return visible; }
  [[nodiscard]] WindowPlacement Placement() const override { return placement; }
  void SetPlacement(const WindowPlacement& place) override { placement = place; }
  [[nodiscard]] std::vector<Monitor> Monitors() const override { return {{0, 0, 1920, 1080}}; }

  bool visible = false;
  WindowPlacement placement{50, 60, 700, 500, WindowPlacement::State::kNormal};
};

class FakeForecastView : public FakeWindow<ForecastView> {
 public:
  void SetCaption(const std::string& text) override { caption = text; }
  void SetChecked(ForecastCheck check, bool on) override { checked[check] = on; }
  void SetStatus(const std::string& text) override { status = text; }
  void Refresh() override { ++refreshes; }

  std::string caption;
  std::string status;
  std::map<ForecastCheck, bool> checked;
  int refreshes = 0;
};

class FakeConditionsView : public FakeWindow<ConditionsView> {
 public:
  void SetText(const std::string& bulletin) override { text = bulletin; }

  std::string text;
};

}  // namespace skyhop::testing
