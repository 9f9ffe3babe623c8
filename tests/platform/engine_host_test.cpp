#include <gtest/gtest.h>

#include <cstdlib>

#include "common/files.h"
#include "platform/platform.h"
#include "support/temporary_folder.h"

namespace skyhop {
namespace {

/// Sets an environment variable while this object lives.
class Variable {
 public:
  Variable(const char* name, const std::string& value) : name_(name) {
    const char* const before = std::getenv(name);
    before_ = before == nullptr ? "" : before;
    ::setenv(name, value.c_str(), 1);
  }
  ~Variable() { ::setenv(name_, before_.c_str(), 1); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* name_;
  std::string before_;
};

TEST(EngineHost, FindsExecutableProgramsOnTheSearchPath) {
  const skyhop::testing::TemporaryFolder folder;
  for (const char* name : {"first/voacapl", "second/voacapl", "second/wine"}) {
    std::filesystem::create_directories((folder / name).parent_path());
    WriteFile(folder / name, "x");
  }
  using std::filesystem::perms;
  std::filesystem::permissions(folder / "second/voacapl", perms::owner_all);
  const std::string root = PathText(folder.Path());
  const Variable path("PATH", "relative::" + root + "/first:" + root + "/second:" + root + "/none");
  const Variable home("HOME", root);
  const auto host = platform::MakeEngineHost();
  EXPECT_FALSE(host->RunsWindowsPrograms());
  EXPECT_EQ(host->NativeVoacap(), folder / "second/voacapl");
  EXPECT_EQ(host->Wine(), std::nullopt) << "it may not be run";
  EXPECT_EQ(host->NativeData(), folder / "itshfbc");
}

}  // namespace
}  // namespace skyhop
