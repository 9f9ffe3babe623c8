#pragma once

namespace skyhop {

/// Message loops that run inside the program's own: open dialogs and pauses. Whoever began one is
/// still at work and needs the windows to its end.
class NestedLoops {
 public:
  /// One of them, while it lives.
  class Scope {
   public:
    Scope() { ++depth; }
    ~Scope() { --depth; }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
  };

  [[nodiscard]] static bool Any() { return depth > 0; }

 private:
  inline static int depth = 0;
};

}  // namespace skyhop
