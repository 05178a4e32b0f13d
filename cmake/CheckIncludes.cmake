# SPDX-License-Identifier: MIT
cmake_minimum_required(VERSION 3.25)
# cmake -DROOT=<dir> -DFOLDER=<f> -DALLOWED=<f;g;...> -DNO_WIDGETS=<0|1> -P CheckIncludes.cmake
# Fails when a file of FOLDER includes a header of a folder it does not link, or, in a
# folder marked NO_WIDGETS, a QtWidgets header. All folders share one include root, so the
# compiler alone would not notice.
file(GLOB sources ${ROOT}/${FOLDER}/*.h ${ROOT}/${FOLDER}/*.cpp
  ${ROOT}/${FOLDER}/toolkit/*.h ${ROOT}/${FOLDER}/toolkit/*.cpp)
if(NOT sources)
  message(FATAL_ERROR "no source file in ${FOLDER}")
endif()
set(widgets "<(QtWidgets/|QWidget|QApplication|QDialog|QMessageBox|QLabel|QMenu|QAbstractButton)")
set(bad "")
foreach(source IN LISTS sources)
  file(STRINGS ${source} lines REGEX "^ *# *include")
  foreach(line IN LISTS lines)
    if(line MATCHES "include \"([A-Za-z/]+)/[^/\"]+\"")
      string(REGEX REPLACE "/toolkit$" "" from "${CMAKE_MATCH_1}")
      if(NOT from IN_LIST ALLOWED)
        string(APPEND bad "  ${source}: ${line}\n")
      endif()
    elseif(line MATCHES "include \"" AND NOT line MATCHES "\\.moc\"")
      string(APPEND bad "  ${source}: ${line} (write the path from the root)\n")
    elseif(NO_WIDGETS AND line MATCHES "${widgets}")
      string(APPEND bad "  ${source}: ${line}\n")
    endif()
  endforeach()
endforeach()
if(bad)
  message(FATAL_ERROR "${FOLDER} may include only: ${ALLOWED}\n${bad}")
endif()
