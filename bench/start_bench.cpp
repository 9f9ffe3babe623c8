// Measures the time from the start of the program until its window is on the screen, and its memory
// then. Needs a separate X display, because it takes the first painted window for the program's.

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <benchmark/benchmark.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <set>
#include <string>
#include <thread>

#include "common/files.h"
#include "support/temporary_folder.h"

extern char** environ;

namespace skyhop {
namespace {

using Clock = std::chrono::steady_clock;
using testing::TemporaryFolder;

constexpr auto kLongest = std::chrono::seconds(20);
/// By then the work that follows the start is done.
constexpr auto kSettled = std::chrono::seconds(5);
/// Number of colours from which a window counts as painted: a window with its controls and the
/// empty chart has far more than an empty one.
constexpr std::size_t kPaintedColors = 40;

int IgnoreError(Display*, XErrorEvent*) {
  return 0;  // windows appear and disappear during the check
}

/// Whether a painted window of the program's size exists.
bool WindowPainted(Display* display) {
  Window root = DefaultRootWindow(display);
  Window parent = 0;
  Window* children = nullptr;
  unsigned count = 0;
  if (::XQueryTree(display, root, &root, &parent, &children, &count) == 0) return false;
  bool painted = false;
  for (unsigned i = 0; i < count && !painted; ++i) {
    XWindowAttributes place{};
    if (::XGetWindowAttributes(display, children[i], &place) == 0) continue;
    if (place.map_state != IsViewable || place.width < 400 || place.height < 300) continue;
    // The chart is in the lower part; the upper part is painted together with it.
    const int height = place.height / 3;
    XImage* image = ::XGetImage(display, children[i], 0, place.height - height,
                                static_cast<unsigned>(place.width), static_cast<unsigned>(height),
                                AllPlanes, ZPixmap);
    if (image == nullptr) continue;
    std::set<unsigned long> colors;
    for (int y = 0; y < image->height; y += 2) {
      for (int x = 0; x < image->width; x += 2) colors.insert(XGetPixel(image, x, y));
    }
    XDestroyImage(image);
    painted = colors.size() >= kPaintedColors;
  }
  if (children != nullptr) ::XFree(children);
  return painted;
}

/// Resident memory of a process, MB.
double ResidentMemory(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/statm");
  double pages = 0;
  double resident = 0;
  status >> pages >> resident;
  return resident * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

struct Started {
  double seconds = 0;
  double memory = 0;
};

/// Starts the program and ends it when its window is painted and `stay` has passed.
std::optional<Started> StartOnce(Display* display, Clock::duration stay = {}) {
  std::string program = SKYHOP_PROGRAM;
  char* arguments[] = {program.data(), nullptr};
  const Clock::time_point start = Clock::now();
  pid_t process = 0;
  if (::posix_spawn(&process, arguments[0], nullptr, nullptr, arguments, environ) != 0) return {};
  std::optional<Started> started;
  while (!started && Clock::now() - start < kLongest) {
    if (WindowPainted(display)) {
      const std::chrono::duration<double> taken = Clock::now() - start;
      std::this_thread::sleep_for(stay);
      started = Started{taken.count(), ResidentMemory(process)};
    } else {
      ::usleep(2000);
    }
  }
  ::kill(process, SIGTERM);
  ::waitpid(process, nullptr, 0);
  return started;
}

void StartToPaintedWindow(benchmark::State& state) {
  Display* display = ::XOpenDisplay(nullptr);
  if (display == nullptr) {
    state.SkipWithError("there is no X display");
    return;
  }
  ::XSetErrorHandler(IgnoreError);
  const TemporaryFolder folder;
  ::setenv("SKYHOP_HOME", PathText(folder / "home").c_str(), 1);
  ::setenv("XDG_CONFIG_HOME", PathText(folder / "config").c_str(), 1);
  // This start also sets up the program folder and fills the caches.
  const std::optional<Started> first = StartOnce(display, kSettled);
  for ([[maybe_unused]] auto _ : state) {
    const std::optional<Started> started = StartOnce(display);
    if (!started) {
      state.SkipWithError("the window did not come");
      break;
    }
    state.SetIterationTime(started->seconds);
  }
  if (first) state.counters["memory_MB"] = first->memory;
  ::XCloseDisplay(display);
}
BENCHMARK(StartToPaintedWindow)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10);

}  // namespace
}  // namespace skyhop
