# The cross compiler for Windows, shared by the toolchain files, which set CMAKE_SYSTEM_PROCESSOR.
set(CMAKE_SYSTEM_NAME Windows)
set(mingw_triplet ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32)
# The variant with POSIX threads: the other one lacks the threads of the language's library.
set(CMAKE_C_COMPILER ${mingw_triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${mingw_triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${mingw_triplet}-windres)

# SKYHOP_WINDOWS_LIBRARIES is the folder that scripts/windows-libraries made. Nothing of the build
# machine's own libraries and headers is ever looked at.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES SKYHOP_WINDOWS_LIBRARIES)
set(CMAKE_FIND_ROOT_PATH ${SKYHOP_WINDOWS_LIBRARIES} /usr/${mingw_triplet})
set(CMAKE_PREFIX_PATH ${SKYHOP_WINDOWS_LIBRARIES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The toolkit describes itself by a program.
set(wxWidgets_CONFIG_EXECUTABLE ${SKYHOP_WINDOWS_LIBRARIES}/bin/wx-config)

# Tests run under Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/under-wine --collected)

# Programs that need no library but those of the system.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
