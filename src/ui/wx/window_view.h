#pragma once

#include "ui/shared/prediction_view.h"
#include "ui/wx/control_set.h"

namespace skyhop {

class PredictionFrame;

/// The controller's view of the main window.
class WindowView : public PredictionView {
 public:
  WindowView(PredictionFrame& frame, ControlSet& controls) : frame_(&frame), controls_(&controls) {}

  [[nodiscard]] std::string Text(TextField field) const override { return controls_->Text(field); }
  void SetText(TextField field, const std::string& text) override {
    controls_->SetText(field, text);
  }
  void MarkRefused(TextField field, bool refused) override {
    controls_->MarkRefused(field, refused);
  }
  [[nodiscard]] int Selected(OptionGroup group) const override {
    return controls_->Selected(group);
  }
  void Select(OptionGroup group, int index) override { controls_->Select(group, index); }
  void SetModes(std::span<const std::string> modes) override { controls_->SetModes(modes); }
  [[nodiscard]] bool Checked(CheckBox box) const override { return controls_->Checked(box); }
  void SetChecked(CheckBox box, bool checked) override { controls_->SetChecked(box, checked); }
  void SetLabel(Label label, const std::string& text) override;
  void Enable(Button button, bool enabled) override { controls_->Enable(button, enabled); }

  void StartTimer(WindowTimer timer, std::chrono::milliseconds interval) override;
  void StopTimer(WindowTimer timer) override;
  [[nodiscard]] bool TimerRunning(WindowTimer timer) const override;

  void ShowSnr(const SnrDisplay& display) override;

  void SetCaption(const std::string& caption) override;
  void ShowNotice(const Notice& notice) override;
  void ShowTab(Tab tab) override;
  void SetWebPages(std::span<const WebPage> pages) override;
  void SetStatus(const std::string& text) override;
  void ShowToolTips(bool show) override;

  [[nodiscard]] WindowPlacement Placement() const override;
  void SetPlacement(const WindowPlacement& placement) override;
  [[nodiscard]] std::vector<Monitor> Monitors() const override;
  void ShowWindow() override;
  void RestoreWindow() override;
  bool OpenInBrowser(const std::string& url) override;
  void Close() override;

 private:
  PredictionFrame* frame_;
  ControlSet* controls_;
};

}  // namespace skyhop
