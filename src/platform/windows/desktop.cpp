#include "platform/desktop.h"

#include <windows.h>

// The declarations need this order.
#include <initguid.h>
#include <oleacc.h>

#include <algorithm>
#include <string>
#include <vector>

namespace skyhop::platform {

// The toolkit loads no drivers here.
PlainDisplayStart::PlainDisplayStart() = default;
PlainDisplayStart::~PlainDisplayStart() = default;

void LoadFontsAhead() {
  // The system loads its fonts itself.
}

void TieLabel(void* label, void* field) {
  auto* const label_window = static_cast<HWND>(label);
  auto* const field_window = static_cast<HWND>(field);
  if (!::IsWindow(label_window) || !::IsWindow(field_window)) return;
  std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(label_window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(
      ::GetWindowTextW(label_window, text.data(), static_cast<int>(text.size()))));
  std::erase(text, L'&');
  IAccPropServices* services = nullptr;
  if (FAILED(::CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                                IID_IAccPropServices, reinterpret_cast<void**>(&services)))) {
    return;
  }
  services->SetHwndPropStr(field_window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                           PROPID_ACC_NAME, text.c_str());
  services->Release();
}

bool TakeEscapeKey() {
  bool struck = false;
  std::vector<MSG> others;
  MSG message{};
  while (::PeekMessageW(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE) != 0) {
    if (message.wParam == VK_ESCAPE) {
      struck = true;
    } else {
      others.push_back(message);
    }
  }
  for (const MSG& other : others) {
    ::PostMessageW(other.hwnd, other.message, other.wParam, other.lParam);
  }
  return struck;
}

void LayOutHidden(void* /*window*/, int /*width*/, int /*height*/) {
  // Windows shows a window at its final place at once.
}

}  // namespace skyhop::platform
