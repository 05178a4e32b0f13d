# SPDX-License-Identifier: MIT
cmake_minimum_required(VERSION 3.25)
# cmake -DROOT=<dir> -DFOLDER=<f> -DALLOWED=<f;g;...> -DNO_WIDGETS=<0|1> -P CheckIncludes.cmake
# Fails when a file of FOLDER includes a header of a folder it does not link, or, in a
# folder marked NO_WIDGETS, a QtWidgets header. All folders share one include root, so the
# compiler alone would not notice.

# The layer that a file belongs to: the nearest folder above it with a CMakeLists.txt. Subfolders
# without one are parts of their layer.
function(layer_of file result)
  get_filename_component(folder "${file}" DIRECTORY)
  while(folder AND NOT EXISTS ${ROOT}/${folder}/CMakeLists.txt)
    get_filename_component(folder "${folder}" DIRECTORY)
  endwhile()
  set(${result} "${folder}" PARENT_SCOPE)
endfunction()

set(widgets "<(QtWidgets/|QWidget|QApplication|QDialog|QMessageBox|QLabel|QMenu|QAbstractButton)")
set(bad "")
set(checked 0)
file(GLOB_RECURSE sources RELATIVE ${ROOT} ${ROOT}/${FOLDER}/*.h ${ROOT}/${FOLDER}/*.cpp)
foreach(source IN LISTS sources)
  layer_of(${source} layer)
  if(NOT layer STREQUAL FOLDER)
    continue()
  endif()
  math(EXPR checked "${checked} + 1")
  file(STRINGS ${ROOT}/${source} lines REGEX "^ *# *include")
  foreach(line IN LISTS lines)
    if(line MATCHES "include \"([^\"]+/[^\"]+)\"")
      layer_of(${CMAKE_MATCH_1} from)
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
if(checked EQUAL 0)
  message(FATAL_ERROR "no source file in ${FOLDER}")
endif()
if(bad)
  message(FATAL_ERROR "${FOLDER} may include only: ${ALLOWED}\n${bad}")
endif()
