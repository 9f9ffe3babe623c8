#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace skyhop::testing {

/// The result of a finished program.
struct ProgramResult {
  int status = -1;
  std::string out;
  std::string err;
};

/// Runs a program with arguments and with variables added to the environment.
[[nodiscard]] ProgramResult RunProgram(const std::filesystem::path& program,
                                       const std::vector<std::string>& arguments,
                                       const std::map<std::string, std::string>& environment);

[[nodiscard]] inline bool Holds(const std::string& text, const std::string& what) {
  return text.find(what) != std::string::npos;
}

}  // namespace skyhop::testing
