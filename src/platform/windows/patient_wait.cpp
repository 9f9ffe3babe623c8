#include "platform/windows/patient_wait.h"

#include <algorithm>

namespace skyhop::platform {

bool WaitPatiently(HANDLE object, std::chrono::steady_clock::time_point until) {
  while (true) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
    const auto milliseconds = static_cast<DWORD>(std::max<long long>(left.count(), 0));
    if (::MsgWaitForMultipleObjects(1, &object, FALSE, milliseconds, QS_SENDMESSAGE) !=
        WAIT_OBJECT_0 + 1) {
      return ::WaitForSingleObject(object, 0) == WAIT_OBJECT_0;
    }
    MSG message{};
    ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
  }
}

}  // namespace skyhop::platform
