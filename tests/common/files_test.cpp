#include "common/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <system_error>

#include "common/errors.h"
#include "support/error_number.h"
#include "support/temporary_folder.h"

namespace skyhop {
namespace {

using ::skyhop::testing::ErrorNumber;
using ::skyhop::testing::TemporaryFolder;

TEST(Files, KeepEveryByte) {
  const TemporaryFolder folder("R\xC3\xA9sultats de pr\xC3\xA9vision");
  const std::filesystem::path path = folder / "d\xC3\xA9j\xC3\xA0.txt";
  const std::string content("a\r\nb\n\0\x1A\xFF", 8);
  WriteFile(path, "something longer that is replaced");
  WriteFile(path, content);
  EXPECT_EQ(ReadFile(path, content.size()), content);
  EXPECT_EQ(PathFromText(PathText(path)), path);
  EXPECT_TRUE(PathText(path).ends_with("d\xC3\xA9j\xC3\xA0.txt"));
}

TEST(Files, ThrowTheErrorNumberOfTheFailure) {
  const TemporaryFolder folder;
  WriteFile(folder / "file", "12345");
  const auto read = [&](const char* name) {
    return ErrorNumber([&] { static_cast<void>(ReadFile(folder / name, 4)); });
  };
  EXPECT_EQ(read("absent"), errors::kFileNotFound);
  EXPECT_EQ(read("."), errors::kPathFileAccess);
  EXPECT_EQ(read("file"), errors::kOverflow);
  EXPECT_EQ(ErrorNumber([&] { WriteFile(folder / "absent/file", ""); }), errors::kFileNotFound);
  EXPECT_EQ(ErrorNumber([&] { WriteFile(folder.Path(), ""); }), errors::kPathFileAccess);
}

TEST(Files, AreReplacedAsAWholeOrNotAtAll) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder / "file";
  WriteFileAtOnce(file, "old");
  const FileSync fail = [](const std::filesystem::path& written) {
    throw Error(errors::kDiskFull, ReadFile(written, 100));
  };
  try {
    WriteFileAtOnce(file, "new", std::filesystem::perms::unknown, fail);
    ADD_FAILURE() << "replaced a file whose content is not on the disk";
  } catch (const Error& error) {
    EXPECT_STREQ(error.what(), "new") << "it is complete before it takes the name";
  }
  EXPECT_EQ(ReadFile(file, 100), "old");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(Files, HaveUrlsThatABrowserOpens) {
  const struct {
    const char* name;
    const char* url;
  } cases[] = {
      {"C:\\Program Files\\Skyhop\\index.htm", "file:///C:/Program%20Files/Skyhop/index.htm"},
      {"/home/me/my  files/index.htm", "file:///home/me/my%20%20files/index.htm"},
      {"help/a%20b#c?.htm", "file:///help/a%20b#c?.htm"},
      {"", "file:///"},
  };
  for (const auto& c : cases) EXPECT_EQ(Common::HTTPFilename(c.name), c.url);
}

TEST(FileError, MapsTheSystemsFailures) {
  const struct {
    std::errc code;
    int number;
  } cases[] = {
      {std::errc::no_such_file_or_directory, errors::kFileNotFound},
      {std::errc::not_a_directory, errors::kPathNotFound},
      {std::errc::permission_denied, errors::kPermissionDenied},
      {std::errc::no_space_on_device, errors::kDiskFull},
      {std::errc::file_exists, errors::kFileAlreadyExists},
      {std::errc::io_error, errors::kDiskNotReady},
      {std::errc::too_many_files_open, errors::kPathFileAccess},
  };
  for (const auto& c : cases) {
    const std::error_code code = std::make_error_code(c.code);
    const Error error = FileError(code, "cannot write deck");
    EXPECT_EQ(error.Number(), c.number);
    EXPECT_EQ(error.what(), "cannot write deck: " + code.message());
  }
}

}  // namespace
}  // namespace skyhop
