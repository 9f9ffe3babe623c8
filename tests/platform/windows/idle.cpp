// An engine that hangs: sleeps as many milliseconds as its first argument says. A second argument
// names a file that takes its process number.
#include <windows.h>

#include <cstdlib>
#include <fstream>

int main(int argc, char** argv) {
  if (argc > 2) std::ofstream(argv[2]) << ::GetCurrentProcessId() << '\n';
  ::Sleep(argc > 1 ? static_cast<DWORD>(std::atoi(argv[1])) : 60000);
  return 0;
}
