#pragma once

#include <memory>

namespace skyhop {

/// A lock that is held while an engine runs. It keeps other programs from using the engines'
/// folders.
class RunLock {
 public:
  virtual ~RunLock() = default;
};

class RunLocker {
 public:
  virtual ~RunLocker() = default;
  /// Returns null if another program holds the lock. Does not wait. Throws the Errors of FileError
  /// if the folder cannot be locked at all.
  [[nodiscard]] virtual std::unique_ptr<RunLock> Lock() = 0;
};

}  // namespace skyhop
