#include <clocale>
#include <iostream>
#include <string_view>
#include <vector>

#include "estimate/run.h"

int main(int argc, char** argv) {
  // Letters only: numbers are read and written the same everywhere.
  std::setlocale(LC_CTYPE, "");
  const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  return skyhop::estimate::RunEngine(arguments, std::cin, std::cout, std::cerr);
}
