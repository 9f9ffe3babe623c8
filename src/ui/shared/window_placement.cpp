#include "ui/shared/window_placement.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "common/program.h"

namespace skyhop {
namespace {

using State = WindowPlacement::State;

constexpr const char* kSection = "Windows";

/// The values of a placement and the ends of their keys.
struct Dimension {
  const char* key;
  int WindowPlacement::*value;
};
constexpr std::array<Dimension, 4> kDimensions = {{{"Left", &WindowPlacement::left},
                                                   {"Top", &WindowPlacement::top},
                                                   {"Width", &WindowPlacement::width},
                                                   {"Height", &WindowPlacement::height}}};

/// A range along one axis. Stored values may use the full 32 bits, so sums need more.
struct Extent {
  std::int64_t begin;
  std::int64_t size;

  [[nodiscard]] std::int64_t End() const { return begin + size; }
};

Extent Horizontal(const WindowPlacement& window) {
  return {window.left, window.width};
}
Extent Vertical(const WindowPlacement& window) {
  return {window.top, window.height};
}
Extent Horizontal(const Monitor& monitor) {
  return {monitor.left, std::int64_t{monitor.right} - monitor.left};
}
Extent Vertical(const Monitor& monitor) {
  return {monitor.top, std::int64_t{monitor.bottom} - monitor.top};
}

bool IsUsable(const Monitor& monitor) {
  return monitor.right > monitor.left && monitor.bottom > monitor.top;
}

/// The length that both ranges share; if none, minus the distance between them.
double Overlap(const Extent& a, const Extent& b) {
  return static_cast<double>(std::min(a.End(), b.End()) - std::max(a.begin, b.begin));
}

/// The shared area of window and monitor; if none, minus the square of their distance.
double Closeness(const WindowPlacement& window, const Monitor& monitor) {
  const double x = Overlap(Horizontal(window), Horizontal(monitor));
  const double y = Overlap(Vertical(window), Vertical(monitor));
  if (x > 0 && y > 0) return x * y;
  const double distance_x = std::min(x, 0.0);
  const double distance_y = std::min(y, 0.0);
  return -(distance_x * distance_x + distance_y * distance_y);
}

void Fit(int& begin, int& size, const Extent& screen) {
  size = static_cast<int>(std::clamp<std::int64_t>(size, 1, screen.size));
  begin = static_cast<int>(std::clamp<std::int64_t>(begin, screen.begin, screen.End() - size));
}

State RestoredState(const std::string& window, State current, const Common::Settings& settings) {
  const int stored = settings.GetIntegerSetting(kProductName, kSection, window + "Windowstate",
                                                std::to_string(static_cast<int>(current)));
  switch (stored) {
    case static_cast<int>(State::kNormal):
    case static_cast<int>(State::kMinimized):
      return State::kNormal;
    case static_cast<int>(State::kMaximized):
      return State::kMaximized;
    default:
      return current;
  }
}

}  // namespace

void SaveWindowPosition(const std::string& window, const WindowPlacement& placement,
                        const Common::Settings& settings, Diagnostics& diagnostics) {
  diagnostics.Trap("Common.SaveWindowPosition", [&] {
    std::vector<SettingEntry> entries;
    entries.reserve(kDimensions.size() + 1);
    for (const Dimension& dimension : kDimensions) {
      entries.push_back(
          {kSection, window + dimension.key, std::to_string(placement.*dimension.value)});
    }
    entries.push_back(
        {kSection, window + "WindowState", std::to_string(static_cast<int>(placement.state))});
    settings.Store().Save(kProductName, entries);
  });
}

WindowPlacement RestoreWindowPosition(const std::string& window, const WindowPlacement& current,
                                      std::span<const Monitor> monitors,
                                      const Common::Settings& settings) {
  WindowPlacement placement = current;
  for (const Dimension& dimension : kDimensions) {
    placement.*dimension.value = settings.GetLongSetting(
        kProductName, kSection, window + dimension.key, std::to_string(current.*dimension.value));
  }
  if (placement.width <= 0) placement.width = current.width;
  if (placement.height <= 0) placement.height = current.height;
  placement.state = RestoredState(window, current.state, settings);
  if (!settings.GetBooleanSetting(kProductName, kSection, "DualMonitor", "False")) {
    monitors = monitors.first(std::min<std::size_t>(monitors.size(), 1));
  }
  return OnScreen(placement, monitors);
}

WindowPlacement OnScreen(const WindowPlacement& placement, std::span<const Monitor> monitors) {
  const Monitor* best = nullptr;
  for (const Monitor& monitor : monitors) {
    if (!IsUsable(monitor)) continue;
    if (best == nullptr || Closeness(placement, monitor) > Closeness(placement, *best)) {
      best = &monitor;
    }
  }
  WindowPlacement fitted = placement;
  if (best != nullptr) {
    Fit(fitted.left, fitted.width, Horizontal(*best));
    Fit(fitted.top, fitted.height, Vertical(*best));
  }
  return fitted;
}

}  // namespace skyhop
