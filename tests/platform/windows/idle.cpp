// An engine that hangs: sleeps as many milliseconds as its argument says, then leaves a file.
#include <windows.h>

#include <cstdlib>

int main(int argc, char** argv) {
  ::Sleep(argc > 1 ? static_cast<DWORD>(std::atoi(argv[1])) : 60000);
  if (argc > 2)
    ::CloseHandle(::CreateFileA(argv[2], GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  return 0;
}
