#pragma once

#include <windows.h>

#include <utility>

namespace skyhop::platform {

/// Owns a handle of a system object. Treats both of the system's invalid values, null and
/// INVALID_HANDLE_VALUE, as none.
class Handle {
 public:
  Handle() = default;
  explicit Handle(HANDLE handle) : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
  Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Handle() { Close(); }

  [[nodiscard]] bool IsOpen() const { return handle_ != nullptr; }
  [[nodiscard]] HANDLE Get() const { return handle_; }
  void Close() {
    if (handle_ != nullptr) ::CloseHandle(std::exchange(handle_, nullptr));
  }

 private:
  HANDLE handle_ = nullptr;
};

}  // namespace skyhop::platform
