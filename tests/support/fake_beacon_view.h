#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/fake_space_weather_views.h"
#include "ui/beacon/beacon_view.h"

namespace skyhop::testing {

class FakeBeaconView : public FakeWindow<BeaconView>, public BeaconTexts {
 public:
  void SetTexts(const BeaconTexts& texts) override { static_cast<BeaconTexts&>(*this) = texts; }
  void SetStatus(const std::string& text) override { status = text; }
  void SetSelectBy(int index) override { select_by = index; }
  void SetChoices(const std::vector<std::string>& texts, int index) override {
    choices = texts;
    choice = index;
  }
  void SetChecked(BeaconCheck check, bool on) override { checked[check] = on; }
  void Enable(BeaconButton button, bool enable) override { enabled[button] = enable; }
  [[nodiscard]] std::string Note() const override { return note; }
  void SetNote(const std::string& text) override { note = text; }
  void Refresh() override { ++refreshes; }
  void StartTimer(std::chrono::milliseconds delay) override { timer = delay; }
  void StopTimer() override { timer.reset(); }
  [[nodiscard]] std::optional<std::string> AskFile(const std::string& text) override {
    proposal = text;
    return file;
  }

  std::string status;
  int select_by = -1;
  std::vector<std::string> choices;
  int choice = -1;
  std::map<BeaconCheck, bool> checked;
  std::map<BeaconButton, bool> enabled;
  std::string note;
  int refreshes = 0;
  std::optional<std::chrono::milliseconds> timer;
  std::string proposal;
  std::optional<std::string> file;
};

}  // namespace skyhop::testing
