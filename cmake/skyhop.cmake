# Compiler settings shared by every target, and the two functions that declare targets.

add_library(skyhop_options INTERFACE)
target_include_directories(skyhop_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(
  skyhop_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wconversion
            -Wshadow
            -Wnon-virtual-dtor
            $<$<BOOL:${SKYHOP_WERROR}>:-Werror>
            # Contraction into fused operations would make single-precision results depend on the
            # processor that the compiler is told to build for.
            -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # This version takes a literal in front of a temporary string for an overlapping copy.
  target_compile_options(skyhop_options INTERFACE -Wno-restrict)
endif()
if(WIN32)
  # Whole-width system functions everywhere, those of Windows 10, no macros named min and max.
  target_compile_definitions(skyhop_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
                                                      _WIN32_WINNT=0x0A00 __USE_MINGW_ANSI_STDIO=1)
endif()
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  # The x87 unit keeps excess precision; SSE2 rounds as the language says.
  target_compile_options(skyhop_options INTERFACE -msse2 -mfpmath=sse)
endif()
if(SKYHOP_SANITIZE)
  target_compile_options(skyhop_options INTERFACE -fsanitize=address,undefined
                                                  -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(skyhop_options INTERFACE -fsanitize=address,undefined)
endif()

# skyhop_library(NAME SOURCES... [LINKS targets...]): the static library of one source folder.
function(skyhop_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(skyhop_${name} STATIC ${ARG_SOURCES})
  target_link_libraries(skyhop_${name} PUBLIC skyhop_options ${ARG_LINKS})
endfunction()

# skyhop_test(NAME SOURCES... [LINKS targets...]): one GoogleTest program, its cases found by CTest.
function(skyhop_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(test_${name} ${ARG_SOURCES})
  target_link_libraries(test_${name} PRIVATE skyhop_test_support ${ARG_LINKS} GTest::gtest_main)
  target_compile_definitions(test_${name}
                             PRIVATE SKYHOP_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
  set_target_properties(test_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY
                                                ${PROJECT_BINARY_DIR}/tests)
  gtest_discover_tests(test_${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
endfunction()
