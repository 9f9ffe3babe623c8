# Compiler settings for all targets, and the functions that declare targets.

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
            # With fused operations, single-precision results would depend on the processor for
            # which the compiler builds.
            -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # This version mistakes a literal before a temporary string for an overlapping copy.
  target_compile_options(skyhop_options INTERFACE -Wno-restrict)
endif()
if(CMAKE_UNITY_BUILD)
  # Batches include sources. This warning mistakes their local types for those of a header.
  target_compile_options(skyhop_options INTERFACE -Wno-subobject-linkage)
endif()
if(WIN32)
  # Use the wide-character system functions of Windows 10 everywhere, and no macros named min and
  # max.
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

# skyhop_windows_facts(PROGRAM DESCRIPTION MANIFEST): adds the data that Windows needs of a program:
# icon, version, manifest (a file of packaging/windows). Does nothing for other systems.
function(skyhop_windows_facts program description manifest)
  if(NOT WIN32)
    return()
  endif()
  set(icon ${PROJECT_BINARY_DIR}/skyhop.ico)
  if(NOT TARGET skyhop_icon)
    find_program(RSVG_CONVERT rsvg-convert REQUIRED)
    find_program(ICOTOOL icotool REQUIRED)
    add_custom_command(
      OUTPUT ${icon}
      COMMAND
        sh -c
        "for size in 16 24 32 48 64 256; do ${RSVG_CONVERT} -w $size -h $size ${PROJECT_SOURCE_DIR}/data/icons/skyhop.svg -o icon-$size.png && set -- \"$@\" icon-$size.png; done && ${ICOTOOL} -c -o ${icon} \"$@\""
        sh
      DEPENDS ${PROJECT_SOURCE_DIR}/data/icons/skyhop.svg
      WORKING_DIRECTORY ${PROJECT_BINARY_DIR}
      VERBATIM)
    add_custom_target(skyhop_icon DEPENDS ${icon})
  endif()
  enable_language(RC)
  set(facts ${CMAKE_CURRENT_BINARY_DIR}/${program}.rc)
  set(manifest ${PROJECT_SOURCE_DIR}/packaging/windows/${manifest})
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in ${facts} @ONLY)
  set_source_files_properties(${facts} PROPERTIES OBJECT_DEPENDS "${icon};${manifest}")
  target_sources(${program} PRIVATE ${facts})
  add_dependencies(${program} skyhop_icon)
endfunction()

# The prefix of the build machine's paths for a test that runs on another system.
set(SKYHOP_TEST_ROOT "")
if(WIN32 AND CMAKE_CROSSCOMPILING)
  set(SKYHOP_TEST_ROOT "Z:")
endif()

# skyhop_test(NAME SOURCES... [LINKS targets...]): one GoogleTest program. CTest finds its cases.
function(skyhop_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(test_${name} ${ARG_SOURCES})
  target_link_libraries(test_${name} PRIVATE skyhop_test_support ${ARG_LINKS} GTest::gtest_main)
  target_compile_definitions(test_${name}
                             PRIVATE SKYHOP_TEST_DATA="${SKYHOP_TEST_ROOT}${PROJECT_SOURCE_DIR}/tests/data")
  set_target_properties(test_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY
                                                ${PROJECT_BINARY_DIR}/tests)
  if(CMAKE_CROSSCOMPILING)
    target_precompile_headers(test_${name} REUSE_FROM skyhop_test_support)
    # Starting a program under Wine is slow, so all its cases run together.
    add_test(NAME ${name} COMMAND test_${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
  else()
    gtest_discover_tests(test_${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
  endif()
endfunction()
