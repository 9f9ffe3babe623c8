#pragma once

#include <filesystem>
#include <string>

namespace skyhop::testing {

/// A folder that exists while this object lives.
class TemporaryFolder {
 public:
  /// `name` is the folder's own name; a unique parent separates tests.
  explicit TemporaryFolder(const std::string& name = "folder");
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
  [[nodiscard]] std::filesystem::path operator/(const std::string& name) const;

 private:
  std::filesystem::path parent_;
  std::filesystem::path path_;
};

/// The content of a file of tests/data, byte for byte.
[[nodiscard]] std::string TestData(const std::string& name);

}  // namespace skyhop::testing
