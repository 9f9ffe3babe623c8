#include "support/temporary_folder.h"

#include <atomic>
#include <chrono>
#include <random>
#include <system_error>

#include "common/files.h"

namespace skyhop::testing {
namespace {

std::filesystem::path UniqueFolder() {
  static std::atomic<unsigned> count = 0;
  std::random_device random;
  return std::filesystem::temp_directory_path() /
         ("skyhop-test-" + std::to_string(random()) + "-" + std::to_string(++count));
}

}  // namespace

TemporaryFolder::TemporaryFolder(const std::string& name)
    : parent_(UniqueFolder()), path_(parent_ / PathFromText(name)) {
  std::filesystem::create_directories(path_);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(parent_, ignored);
}

std::filesystem::path TemporaryFolder::operator/(const std::string& name) const {
  return path_ / PathFromText(name);
}

std::string TestData(const std::string& name) {
  return ReadFile(std::filesystem::path(SKYHOP_TEST_DATA) / name, 64U << 20U);
}

}  // namespace skyhop::testing
