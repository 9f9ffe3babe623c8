#include <csignal>
#include <initializer_list>

#include "platform/desktop.h"

namespace skyhop::platform {
namespace {

// A signal handler can use only global variables.
volatile std::sig_atomic_t end_requested = 0;

extern "C" void OnEndSignal(int) {
  end_requested = 1;
}

}  // namespace

void KeepEndRequests() {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    struct sigaction previous {};
    // The caller may have made the program ignore the signal, as "nohup" does.
    if (::sigaction(signal, nullptr, &previous) == 0 && previous.sa_handler == SIG_IGN) continue;
    struct sigaction action {};
    action.sa_handler = &OnEndSignal;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
  }
}

bool EndRequested() {
  return end_requested != 0;
}

}  // namespace skyhop::platform
