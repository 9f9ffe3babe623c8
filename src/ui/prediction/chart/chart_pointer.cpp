#include "ui/prediction/chart/chart_pointer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "bands/bands.h"
#include "common/numbers.h"
#include "ui/drawing/text_width.h"
#include "ui/prediction/chart/chart_scale.h"
#include "ui/prediction/chart/reliability_table.h"

namespace skyhop {
namespace {

using IONCAPModule::ChartScale;

constexpr std::string_view kNotReached = "required reliability not reached";
constexpr std::string_view kTimeLineToolTip = "Vertical Time Index (drag to desired time)";

bool Contains(const Rectangle& area, Point at) {
  return at.x >= area.left && at.x <= area.Right() && at.y >= area.top && at.y <= area.Bottom();
}

std::string Megahertz(float value) {
  return value > 0 ? FixedText(value, 1) : "\u2013";
}

/// The hour that a time of day is in; the end of the day belongs to the last hour.
std::size_t HourOf(double time) {
  return std::min(static_cast<std::size_t>(time), kHourCount - 2);
}

/// The full hour, 0 to 24, that is nearest to a time of day.
std::size_t NearestHour(double time) {
  return std::min(static_cast<std::size_t>(std::lround(std::max(time, 0.0))), kHourCount - 1);
}

/// The values of the predicted curves at `time`, on straight lines between their hourly points.
std::string Values(const ResultsTable& table, double time) {
  const std::size_t before = HourOf(time);
  const auto part = static_cast<float>(time - static_cast<double>(before));
  const auto value = [&](std::size_t row) {
    const auto& hours = table.frequencies[row];
    if (!(hours[before] > 0 && hours[before + 1] > 0)) return Megahertz(0);
    // The amount of a LUF that is not reached is another frequency.
    const bool reached = table.reached[before] && table.reached[before + 1];
    if (row == rows::kLuf && !reached) return Megahertz(0);
    return Megahertz(hours[before] + part * (hours[before + 1] - hours[before]));
  };
  std::string text;
  if (IsPredicted(table, rows::kLuf)) text += "   LUF " + value(rows::kLuf);
  const char* name = "   MUF ";
  for (const auto& [row, confidence] :
       {std::pair(rows::kMuf90, "90% "), {rows::kMuf50, "50% "}, {rows::kMuf10, "10% "}}) {
    if (!IsPredicted(table, row)) continue;
    text.append(std::exchange(name, "   ")).append(confidence).append(value(row));
  }
  return text.empty() ? text : text + " MHz";
}

double TimeAt(const ChartModel& model, const ChartLayout& layout, Point at) {
  return ChartScale(model, layout).TimeForX(at.x - layout.ionprop.left);
}

}  // namespace

double TimeLineX(const ChartModel& model, const ChartLayout& layout) {
  return layout.ionprop.left + ChartScale(model, layout).XForTime(model.time_index);
}

bool OnTimeLine(const ChartModel& model, const ChartLayout& layout, Point at) {
  return std::abs(at.x - TimeLineX(model, layout)) <= kGrabDistance && at.y >= 0 &&
         at.y <= layout.rcv_sun.Bottom();
}

std::int16_t BandAt(const ChartModel& model, const ChartLayout& layout, Point at) {
  if (!model.TableShown()) {
    return ChartScale(model, layout).GetBandForY(static_cast<float>(at.y - layout.ionprop.top));
  }
  const auto band = BandOfRow(model.Day(), layout.ionprop, at.y);
  return band ? static_cast<std::int16_t>(*band) : std::int16_t{-1};
}

std::string ReadoutAt(const ChartModel& model, const ChartLayout& layout, Point at) {
  const Rectangle& plot = layout.ionprop;
  if (!model.plotted || !Contains(plot, at)) return {};
  if (!model.axis.HasExtent() && !model.TableShown()) return {};
  const double time = TimeAt(model, layout, at);
  std::string text = ClockText(time) + " UTC   ";
  const std::int16_t band = BandAt(model, layout, at);
  const auto index = static_cast<std::size_t>(band);
  if (model.Day().HasSnr() && band > 0) {
    return text + BandReadout(model.table, index, HourOf(time));
  }
  if (model.TableShown()) {
    if (band < 0) return {};
    text.append(kBandLabelTexts.at(index)).append("   ");
    return text + CellWords(model.Day(), index, HourOf(time)) + Values(model.table, time);
  }
  const double part = (plot.Bottom() - at.y) / plot.height;
  const double frequency = model.axis.f_min + part * (double{model.axis.f_max} - model.axis.f_min);
  text += FixedText(frequency, 1) + " MHz";
  if (band >= 0) text.append("   ").append(kBandLabelTexts.at(index));
  text += Values(model.table, time);
  if (!model.table.reached.at(NearestHour(time))) text.append("   ").append(kNotReached);
  return text;
}

std::string ReadoutAtTimeIndex(const ChartModel& model) {
  if (!model.plotted) return {};
  const double time = model.time_index;
  std::string text = ClockText(time) + " UTC" + Values(model.table, time);
  // A reliability holds for the hour that begins with it, a point of a curve for the nearest time.
  const std::size_t hour = model.Day().HasSnr() ? HourOf(time) : NearestHour(time);
  if (!model.table.reached.at(hour)) return text.append("   ").append(kNotReached);
  text += "   open:";
  bool any = false;
  for (std::size_t band = 0; band < kBandCount; ++band) {
    if (IONCAPModule::FreqOpen(model.table, model.engine, kBandLineFrequencies[band],
                               static_cast<std::int16_t>(hour), *model.diagnostics) == 0) {
      continue;
    }
    text.append(any ? ", " : " ").append(kBandLabelTexts[band]);
    any = true;
  }
  return any ? text : text + " no band";
}

std::string ToolTipAt(const ChartModel& model, const ChartLayout& layout, Point at) {
  // The surface may be too narrow for the whole title.
  if (!model.title.empty() && at.y < layout.CaptionHeight()) return model.title;
  if (Contains(layout.xmit_sun, at) && !model.sun.xmit_sun.tool_tip.empty()) {
    return "Your Station: " + model.sun.xmit_sun.tool_tip;
  }
  if (Contains(layout.rcv_sun, at) && !model.sun.rcv_sun.tool_tip.empty()) {
    return "DX Station: " + model.sun.rcv_sun.tool_tip;
  }
  if (OnTimeLine(model, layout, at)) return std::string(kTimeLineToolTip);
  if (!model.plotted || !Contains(layout.ionprop, at)) return {};
  // A low window has no room for the key of the hatching.
  const double time = TimeAt(model, layout, at);
  const std::size_t hour = model.TableShown() ? HourOf(time) : NearestHour(time);
  return model.table.reached.at(hour) ? std::string() : std::string(kNotReached);
}

}  // namespace skyhop
