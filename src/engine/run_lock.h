#pragma once

#include <memory>

namespace skyhop {

/// Held while an engine runs: keeps other programs out of the engines' folders.
class RunLock {
 public:
  virtual ~RunLock() = default;
};

class RunLocker {
 public:
  virtual ~RunLocker() = default;
  /// Null when another program holds the lock. Does not wait. Throws the Errors of FileError when
  /// the folder cannot be locked at all.
  [[nodiscard]] virtual std::unique_ptr<RunLock> Lock() = 0;
};

}  // namespace skyhop
