// An engine that hangs: it sleeps as many milliseconds as its first argument states. It writes its
// process number into the file that a second argument names.
#include <windows.h>

#include <cstdlib>
#include <fstream>

int main(int argc, char** argv) {
  if (argc > 2) std::ofstream(argv[2]) << ::GetCurrentProcessId() << '\n';
  ::Sleep(argc > 1 ? static_cast<DWORD>(std::atoi(argv[1])) : 60000);
  return 0;
}
