# SPDX-License-Identifier: MIT
# One interface target carries every flag; nothing sets CMAKE_CXX_FLAGS.
add_library(lumi_options INTERFACE)
target_compile_options(lumi_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wundef -Wformat=2
  -Wimplicit-fallthrough -Wdouble-promotion
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond;-Wlogical-op;-Wsuggest-override>
  $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>
  $<$<BOOL:${LUMI_WERROR}>:-Werror>)
target_compile_definitions(lumi_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
  QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
  QT_USE_QSTRINGBUILDER QT_DISABLE_DEPRECATED_BEFORE=0x060400
  $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>
  # Cards may have files of more than 2 GB.
  $<$<EQUAL:${CMAKE_SIZEOF_VOID_P},4>:_FILE_OFFSET_BITS=64>)
# What users get: hardened, optimised over all files, and without the build folder's name in it.
if(NOT LUMI_SANITIZE)
  include(CheckIPOSupported)
  check_ipo_supported(RESULT CMAKE_INTERPROCEDURAL_OPTIMIZATION_RELEASE OUTPUT ignored LANGUAGES CXX)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  set(sourceMap -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
  target_compile_options(lumi_options INTERFACE $<$<CONFIG:Release>:
    -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 ${sourceMap}>)
  target_link_options(lumi_options INTERFACE $<$<CONFIG:Release>:LINKER:-z,relro,-z,now ${sourceMap}
    # Not -fPIE: the linker would copy Qt's data into the program, and Qt would crash at the start.
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie>
    # Wrong for QHash::insert, once it is inlined while linking.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-alloc-size-larger-than>>)
endif()
if(LUMI_SANITIZE)
  # The reports need only lines (-g1). More debug information takes a tenth of the build's time.
  target_compile_options(lumi_options INTERFACE -g1 -fsanitize=${LUMI_SANITIZE}
    -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(lumi_options INTERFACE -fsanitize=${LUMI_SANITIZE})
endif()
if(LUMI_FUZZ)
  target_compile_options(lumi_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
