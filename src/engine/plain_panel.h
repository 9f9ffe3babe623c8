#pragma once

#include <map>
#include <string>

#include "engine/execute_timer.h"
#include "engine/prediction_panel.h"

namespace skyhop {

/// The prediction window's inputs where there is no window: plain variables.
class PlainPanel : public PredictionPanel {
 public:
  [[nodiscard]] std::string Text(PanelText text) const override {
    const auto found = texts_.find(text);
    return found == texts_.end() ? std::string() : found->second;
  }
  void SetText(PanelText text, const std::string& value) override { texts_[text] = value; }

  [[nodiscard]] int Choice(PanelChoice choice) const override {
    const auto found = choices_.find(choice);
    return found == choices_.end() ? -1 : found->second;
  }
  void SetChoice(PanelChoice choice, int index) override { choices_[choice] = index; }

  [[nodiscard]] bool Checked(PanelCheck check) const override {
    const auto found = checks_.find(check);
    return found != checks_.end() && found->second;
  }
  void SetChecked(PanelCheck check, bool on) override { checks_[check] = on; }

  [[nodiscard]] Antenna AntennaOf(Station station) const override {
    const auto found = antennas_.find(station);
    return found == antennas_.end() ? Antenna() : found->second;
  }
  void SetAntenna(Station station, const Antenna& antenna) { antennas_[station] = antenna; }

  void RestoreWindow() override {}
  void StationsChanged() override {}

 private:
  std::map<PanelText, std::string> texts_;
  std::map<PanelChoice, int> choices_;
  std::map<PanelCheck, bool> checks_;
  std::map<Station, Antenna> antennas_;
};

/// A timer whose owner does the ticking.
class ManualTimer : public ExecuteTimer {
 public:
  void Start() override { running_ = true; }
  void Stop() override { running_ = false; }
  [[nodiscard]] bool Running() const override { return running_; }

 private:
  bool running_ = false;
};

}  // namespace skyhop
