# SPDX-License-Identifier: MIT
# The time limit of one test class, in seconds. A class that hangs fails under its own name.
set(LUMI_TEST_SECONDS 60)

# lumi_test(<folder> [LIBS <target> ...] [TESTS <file> ...] [SOURCES <file> ...])
#
# One executable test_<folder> from TESTS, or from every Test<Class>.cpp of the calling folder, with
# one ctest entry <folder>.<Class> for each. Every entry runs on the offscreen platform with a
# 640 x 480 screen, without a session bus, in a private home.
function(lumi_test folder)
  cmake_parse_arguments(A "" "" "LIBS;TESTS;SOURCES" ${ARGN})
  string(REPLACE "/" "_" name ${folder})
  set(tests ${A_TESTS})
  if(NOT tests)
    file(GLOB tests CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/Test*.cpp)
  endif()
  add_executable(test_${name} ${tests} ${A_SOURCES})
  # FileFaults.cpp replaces both kinds of each call, open() and open64(). With this macro of 32-bit
  # builds, both would be the same function.
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    list(FILTER A_SOURCES INCLUDE REGEX "/FileFaults[.]cpp$")
    set_source_files_properties(${A_SOURCES} PROPERTIES
      SKIP_PRECOMPILE_HEADERS ON COMPILE_OPTIONS -U_FILE_OFFSET_BITS)
  endif()
  set_target_properties(test_${name} PROPERTIES AUTOMOC ON)
  target_link_libraries(test_${name} PRIVATE lumi_options lumi_testsupport ${A_LIBS} Qt6::Test)
  target_precompile_headers(test_${name} REUSE_FROM lumi_testsupport)
  foreach(file IN LISTS tests)
    get_filename_component(class ${file} NAME_WE)
    add_test(NAME ${name}.${class} COMMAND test_${name} ${class})
    set_tests_properties(${name}.${class} PROPERTIES TIMEOUT ${LUMI_TEST_SECONDS} ENVIRONMENT
      "QT_QPA_PLATFORM=offscreen:configfile=${PROJECT_SOURCE_DIR}/tests/support/screen.json;DBUS_SESSION_BUS_ADDRESS=disabled:;DBUS_SYSTEM_BUS_ADDRESS=disabled:;LC_ALL=C.UTF-8")
  endforeach()
endfunction()
