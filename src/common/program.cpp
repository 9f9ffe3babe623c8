#include "common/program.h"

namespace skyhop {

ProgramVersion Version() {
  return {SKYHOP_VERSION_MAJOR, SKYHOP_VERSION_MINOR, SKYHOP_VERSION_PATCH};
}

std::string VersionText() {
  const ProgramVersion version = Version();
  return std::to_string(version.major_number) + "." + std::to_string(version.minor_number) + "." +
         std::to_string(version.revision);
}

}  // namespace skyhop
