# The cross compiler for Windows, shared by the toolchain files, which set CMAKE_SYSTEM_PROCESSOR.
set(CMAKE_SYSTEM_NAME Windows)
set(mingw_triplet ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32)
# Use the variant with POSIX threads: the other one lacks std::thread.
set(CMAKE_C_COMPILER ${mingw_triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${mingw_triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${mingw_triplet}-windres)

# SKYHOP_WINDOWS_LIBRARIES is the folder that scripts/windows-libraries created. The build never
# uses libraries and headers of the build machine.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES SKYHOP_WINDOWS_LIBRARIES)
set(CMAKE_FIND_ROOT_PATH ${SKYHOP_WINDOWS_LIBRARIES} /usr/${mingw_triplet})
set(CMAKE_PREFIX_PATH ${SKYHOP_WINDOWS_LIBRARIES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# This program reports the toolkit's options.
set(wxWidgets_CONFIG_EXECUTABLE ${SKYHOP_WINDOWS_LIBRARIES}/bin/wx-config)

# Tests run under Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/under-wine --collected)

# The programs need only the system's libraries.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
