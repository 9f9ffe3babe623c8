#include "ui/prediction/window_status.h"

#include "common/program.h"

namespace skyhop {

void WindowStatus::UpdateCaption(const std::string& text) {
  caption_ = text;
  hint_ = diagnostics_->CaptionHint();
  view_->SetCaption(caption_ + hint_);
}

std::string WindowStatus::GetPropFormCaption() {
  return std::string(kProductName) + " " + VersionText();
}

void WindowStatus::ShowActivity(const std::string& activity) {
  UpdateCaption(GetPropFormCaption() + (activity.empty() ? "" : " - " + activity));
}

void WindowStatus::FollowErrorLog() {
  if (diagnostics_->CaptionHint() != hint_) UpdateCaption(caption_);
}

void WindowStatus::ShowNotice(const Notice& notice) {
  notice_ = notice;
  UpdateNotice();
}

void WindowStatus::SetSunspotMissing(bool missing) {
  sunspot_missing_ = missing;
  UpdateNotice();
}

void WindowStatus::UpdateNotice() {
  const bool free = notice_.kind == Notice::Kind::kNone || notice_.kind == Notice::Kind::kEmpty;
  const Notice shown = free && sunspot_missing_
                           ? Notice{Notice::Kind::kWarning,
                                    "This month's sunspot number was not downloaded. Predictions "
                                    "use the values of the Conditions tab.",
                                    NoticeAction::kRetryDownload}
                           : notice_;
  action_ = shown.action;
  view_->ShowNotice(shown);
}

}  // namespace skyhop
