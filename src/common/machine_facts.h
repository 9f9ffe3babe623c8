#pragma once

#include <string>
#include <vector>

namespace skyhop {

/// One monitor: its rectangle on the desktop, in the window system's units.
struct Monitor {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

/// The facts about the machine and the user's locale in the head of the error log. A fact that the
/// system does not offer is empty.
struct MachineDescription {
  std::string executable;      ///< file name of the program's executable
  std::string module_file;     ///< full path of the file that holds the running code
  int word_length = 64;        ///< 32 or 64
  std::string build;           ///< compiler and kind of build
  std::string system_name;     ///< name of the operating system
  std::string system_version;  ///< its version as a hexadecimal number, without "0x"
  std::string locale_id;
  std::string ansi_code_page;
  std::string oem_code_page;
  std::string country;
  std::string language;
  std::string decimal_separator;
  std::string thousand_separator;
  std::vector<Monitor> monitors;
};

/// Describes the machine for the error log.
class MachineFacts {
 public:
  virtual ~MachineFacts() = default;

  [[nodiscard]] virtual MachineDescription Describe() const = 0;
};

}  // namespace skyhop
