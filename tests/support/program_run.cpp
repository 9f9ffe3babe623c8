#include "support/program_run.h"

#include <cstdlib>

#include "common/files.h"
#include "common/text.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

std::string Quoted(const std::string& text) {
  return "'" + ReplaceAll(text, "'", "'\\''") + "'";
}

constexpr std::size_t kMost = std::size_t{64} << 20U;

}  // namespace

ProgramResult RunProgram(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments,
                         const std::map<std::string, std::string>& environment) {
  const TemporaryFolder folder;
  std::string command = "env";
  for (const auto& [name, value] : environment) {
    command.append(" ").append(name).append("=").append(Quoted(value));
  }
  command += " " + Quoted(PathText(program));
  for (const std::string& argument : arguments) command += " " + Quoted(argument);
  command += " > " + Quoted(PathText(folder / "out")) + " 2> " + Quoted(PathText(folder / "err"));
  const int status = std::system(command.c_str());
  // The status is what waitpid() reports; the exit status is its second byte.
  return {(status & 0x7F) == 0 ? (status >> 8) & 0xFF : -1, ReadFile(folder / "out", kMost),
          ReadFile(folder / "err", kMost)};
}

}  // namespace skyhop::testing
