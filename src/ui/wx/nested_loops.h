#pragma once

namespace skyhop {

/// Message loops that run inside the program's own: open dialogs and pauses. The code that began
/// one is still running and needs the windows until its end.
class NestedLoops {
 public:
  /// Counts as one nested loop while it lives.
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
