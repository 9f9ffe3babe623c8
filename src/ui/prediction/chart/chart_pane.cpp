#include "ui/prediction/chart/chart_pane.h"

#include <algorithm>
#include <cmath>

#include "common/dates.h"
#include "ui/prediction/chart/chart_pointer.h"
#include "ui/prediction/chart/chart_scale.h"
#include "ui/prediction/chart/paint_chart.h"

namespace skyhop {
namespace {

/// Half the width of the label above the time index, in heights of its font.
constexpr double kTimeLabelReach = 2.2;

/// The area of line, handle and label of the time index.
Rectangle OverlayArea(const ChartModel& model, const ChartLayout& layout) {
  const double reach = std::ceil(std::max(kGrabDistance, layout.text_size * kTimeLabelReach)) + 2;
  return {TimeLineX(model, layout) - reach, 0, 2 * reach, layout.rcv_sun.Bottom() + 2};
}

Rectangle Union(const Rectangle& a, const Rectangle& b) {
  const double left = std::min(a.left, b.left);
  const double top = std::min(a.top, b.top);
  return {left, top, std::max(a.Right(), b.Right()) - left, std::max(a.Bottom(), b.Bottom()) - top};
}

}  // namespace

ChartPane::ChartPane(const ResultsTable& table, Diagnostics& diagnostics, const Clock& clock)
    : table_(&table), clock_(&clock), model_(diagnostics), layout_(ArrangeChart(model_, 0, 0, 12)) {
  UpdateVerticalTimeBar();
}

void ChartPane::Resize(double width, double height, double text_size) {
  if (width == layout_.width && height == layout_.height && text_size == layout_.text_size) return;
  layout_ = ArrangeChart(model_, width, height, text_size);
  if (host_ != nullptr) host_->ChartChanged();
}

void ChartPane::Arrange() {
  layout_ = ArrangeChart(model_, layout_.width, layout_.height, layout_.text_size);
  if (host_ != nullptr) host_->ChartChanged();
}

void ChartPane::Paint(Surface& surface) const {
  PaintChart(model_, layout_, surface);
}

void ChartPane::PaintOverlay(Surface& surface) const {
  PaintTimeIndex(model_, layout_, surface);
}

void ChartPane::DisplayTable(EngineChoice engine) {
  model_.DisplayResult(*table_, engine);
  Arrange();
  UpdateVerticalTimeBar();
  Leave();
}

void ChartPane::UpdateVerticalTimeBar() {
  if (dragging_) return;
  model_.diagnostics->Trap("IONCAPModule.UpdateVerticalTimeBar", [&] {
    const HourMinute now = UtcHourMinute(clock_->UtcNow());
    MoveTimeIndex(now.hour + now.minute / 60.0);
  });
}

void ChartPane::MoveTimeIndex(double hours) {
  if (hours == model_.time_index) return;
  const Rectangle before = OverlayArea(model_, layout_);
  model_.time_index = hours;
  if (host_ == nullptr) return;
  host_->OverlayChanged(Union(before, OverlayArea(model_, layout_)));
  host_->ShowReadout(ReadoutAtTimeIndex(model_));
}

void ChartPane::StepTimeIndex(int hours) {
  if (on_time_index_) on_time_index_();
  MoveTimeIndex(std::clamp(TimeIndex() + hours, 0.0, static_cast<double>(kHourCount - 1)));
}

void ChartPane::Press(Point at) {
  const Rectangle& plot = layout_.ionprop;
  if (OnTimeLine(model_, layout_, at)) {
    Timeline_MouseDown(at.x - plot.left);
    return;
  }
  // The labels at the right of the plot belong to their bands too.
  if (!HasResult() || !on_band_ || at.x < plot.left) return;
  if (at.y < plot.top || at.y > plot.Bottom()) return;
  on_band_(BandAt(model_, layout_, at));
}

void ChartPane::Move(Point at) {
  if (dragging_) {
    if (on_time_index_) on_time_index_();
    Timeline_MouseMove(at.x - layout_.ionprop.left);
    return;
  }
  if (host_ == nullptr) return;
  const std::string readout = ReadoutAt(model_, layout_, at);
  host_->ShowReadout(readout.empty() ? ReadoutAtTimeIndex(model_) : readout);
}

void ChartPane::Leave() {
  if (host_ != nullptr && !dragging_) host_->ShowReadout(ReadoutAtTimeIndex(model_));
}

/// `x` is measured from the first hour mark here and below.
void ChartPane::Timeline_MouseDown(double x) {
  dragging_ = true;
  grab_offset_ = IONCAPModule::ChartScale(model_, layout_).XForTime(TimeIndex()) - x;
}

void ChartPane::Timeline_MouseMove(double x) {
  if (dragging_) TimelineMove(x);
}

/// Ignores a place that would let the bar leave the chart.
void ChartPane::TimelineMove(double x) {
  model_.diagnostics->Trap("IONCAPModule.TimelineMove", [&] {
    constexpr double half_width = IONCAPModule::kTimeLineWidth / 2;
    const IONCAPModule::ChartScale scale(model_, layout_);
    const double left = x + grab_offset_ - half_width / 2;
    if (left < 1 || left + 3 * half_width >= scale.XDataScale(kHourCount - 1)) return;
    MoveTimeIndex(scale.TimeForX(left));
  });
}

}  // namespace skyhop
