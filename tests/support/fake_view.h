#pragma once

#include <array>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "ui/shared/prediction_view.h"

namespace skyhop::testing {

/// The prediction window as plain arrays. Tests set values like a user and read the shown values.
class FakeView : public PredictionView {
 public:
  FakeView() { options.fill(-1); }

  [[nodiscard]] std::string Text(TextField field) const override { return texts.at(At(field)); }
  void SetText(TextField field, const std::string& text) override { texts.at(At(field)) = text; }
  void MarkRefused(TextField field, bool refused) override { marked.at(At(field)) = refused; }

  [[nodiscard]] int Selected(OptionGroup group) const override { return options.at(At(group)); }
  void Select(OptionGroup group, int index) override { options.at(At(group)) = index; }
  void SetModes(std::span<const std::string> names) override {
    modes.assign(names.begin(), names.end());
    Select(OptionGroup::kModeSNRCombo, -1);
  }

  [[nodiscard]] bool Checked(CheckBox box) const override { return checks.at(At(box)); }
  void SetChecked(CheckBox box, bool checked) override { checks.at(At(box)) = checked; }

  void SetLabel(Label label, const std::string& text) override { labels.at(At(label)) = text; }
  void Enable(Button button, bool on) override { enabled.at(At(button)) = on; }

  void StartTimer(WindowTimer timer, std::chrono::milliseconds interval) override {
    timers.at(At(timer)) = interval;
  }
  void StopTimer(WindowTimer timer) override { timers.at(At(timer)).reset(); }
  [[nodiscard]] bool TimerRunning(WindowTimer timer) const override {
    return timers.at(At(timer)).has_value();
  }

  void ShowSnr(const SnrDisplay& display) override { snr = display; }

  void SetCaption(const std::string& text) override { caption = text; }
  void ShowNotice(const Notice& shown) override {
    notice = shown;
    if (shown.kind == Notice::Kind::kEmpty) empty_text = shown.text;
  }
  void ShowTab(Tab shown) override { tab = shown; }
  void SetWebPages(std::span<const WebPage> pages) override {
    web_pages.assign(pages.begin(), pages.end());
  }
  void SetStatus(const std::string& text) override { status = text; }
  void ShowToolTips(bool show) override { tool_tips = show; }

  [[nodiscard]] WindowPlacement Placement() const override { return placement; }
  void SetPlacement(const WindowPlacement& now) override { placement = now; }
  [[nodiscard]] std::vector<Monitor> Monitors() const override { return {{0, 0, 1920, 1080}}; }
  void ShowWindow() override { visible = true; }
  void RestoreWindow() override { ++restored; }

  bool OpenInBrowser(const std::string& url) override {
    opened.push_back(url);
    return has_browser;
  }
  void Close() override { ++closed; }

  [[nodiscard]] bool Enabled(Button button) const { return enabled.at(At(button)); }
  [[nodiscard]] bool Marked(TextField field) const { return marked.at(At(field)); }
  [[nodiscard]] std::string Shown(Label label) const { return labels.at(At(label)); }
  [[nodiscard]] std::optional<std::chrono::milliseconds> Interval(WindowTimer timer) const {
    return timers.at(At(timer));
  }

  std::vector<std::string> modes;
  std::vector<std::string> opened;
  std::vector<WebPage> web_pages;
  Notice notice;
  std::string empty_text;
  Tab tab = Tab::kParameters;
  SnrDisplay snr;
  std::string caption;
  std::string status;
  WindowPlacement placement{10, 20, 1000, 700, WindowPlacement::State::kNormal};
  bool tool_tips = false;
  bool has_browser = true;
  bool visible = false;
  int restored = 0;
  int closed = 0;

 private:
  template <class Control>
  static std::size_t At(Control control) {
    return static_cast<std::size_t>(control);
  }

  std::array<std::string, kTextFieldCount> texts;
  std::array<bool, kTextFieldCount> marked{};
  std::array<int, kOptionGroupCount> options{};
  std::array<bool, kCheckBoxCount> checks{};
  std::array<std::string, kLabelCount> labels;
  std::array<bool, kButtonCount> enabled{};
  std::array<std::optional<std::chrono::milliseconds>, kWindowTimerCount> timers;
};

}  // namespace skyhop::testing
