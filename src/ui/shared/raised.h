#pragma once

namespace skyhop {

/// Sets a flag while it lives.
class Raised {
 public:
  explicit Raised(bool& flag) : flag_(&flag) { flag = true; }
  ~Raised() { *flag_ = false; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;

 private:
  bool* flag_;
};

}  // namespace skyhop
