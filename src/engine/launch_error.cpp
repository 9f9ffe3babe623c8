#include "engine/engine_launcher.h"

namespace skyhop {

std::string LaunchErrorText(int code) {
  switch (code) {
    case 0:
      return "insufficient memory or resources";
    case 2:
      return "The specified file was not found.";
    case 3:
      return "The specified path was not found.";
    case 5:
      return "The operating system denied access to the specified file.";
    case 8:
      return "There was not enough memory to complete the operation.";
    case 26:
      return "A sharing violation occurred.";
    case 27:
      return "The filename association is incomplete or invalid.";
    case 28:
      return "The DDE transaction could not be completed because the request timed out.";
    case 29:
      return "The DDE transaction failed.";
    case 30:
      return "The DDE transaction could not be completed because other DDE transactions were being "
             "processed.";
    case 31:
      return "There is no application associated with the given filename extension.";
    case 32:
      return "The specified dynamic-link library was not found.";
    default:
      return "error code " + std::to_string(code);
  }
}

}  // namespace skyhop
