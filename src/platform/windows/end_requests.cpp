#include <windows.h>

#include <atomic>

#include "platform/desktop.h"

namespace skyhop::platform {
namespace {

// The system calls the handler on a separate thread, and the handler can use only global variables.
std::atomic<bool> end_requested = false;

BOOL WINAPI OnConsoleEvent(DWORD) {
  // With FALSE, a second request ends the program.
  return end_requested.exchange(true) ? FALSE : TRUE;
}

/// Closes a dialog as its Cancel button would.
BOOL CALLBACK CancelDialog(HWND window, LPARAM any) {
  wchar_t name[16] = {};
  ::GetClassNameW(window, name, 15);
  constexpr const wchar_t* dialog_class = L"#32770";
  if (!::IsWindowVisible(window) || ::lstrcmpW(name, dialog_class) != 0) return TRUE;
  ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
  *reinterpret_cast<bool*>(any) = true;
  return TRUE;
}

}  // namespace

void KeepEndRequests() {
  // This handles the requests of a terminal. Windows get the end of a session as a message.
  ::SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

bool EndRequested() {
  return end_requested;
}

bool CancelNativeDialogs() {
  bool any = false;
  ::EnumThreadWindows(::GetCurrentThreadId(), CancelDialog, reinterpret_cast<LPARAM>(&any));
  return any;
}

// The system's controls are always light, so a dark desktop changes nothing here.
struct ColorSchemeFollower::State {};

ColorSchemeFollower::ColorSchemeFollower() = default;

ColorSchemeFollower::~ColorSchemeFollower() = default;

}  // namespace skyhop::platform
