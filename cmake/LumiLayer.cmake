# SPDX-License-Identifier: MIT
# lumi_layer(<folder> LEVEL <n> [NO_WIDGETS] SOURCES ... [DEPENDS <folder> ...] [QT <module> ...]
#            [LIBS <target> ...])
#
# Makes the static library lumi_<folder> ("/" becomes "_") from the folder and those of its
# subfolders that are not libraries. Configuration stops if a folder depends on one whose level is
# not lower than its own. A test reads every include of the folder. It fails if the header belongs
# to a folder that is not linked, or to QtWidgets in a folder marked NO_WIDGETS.
function(lumi_layer folder)
  cmake_parse_arguments(A "NO_WIDGETS" "LEVEL" "SOURCES;DEPENDS;QT;LIBS" ${ARGN})
  string(REPLACE "/" "_" name ${folder})
  set(target lumi_${name})
  add_library(${target} STATIC ${A_SOURCES})
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
  set_target_properties(${target} PROPERTIES LUMI_LEVEL ${A_LEVEL} AUTOMOC ON)
  target_link_libraries(${target} PRIVATE lumi_options PUBLIC ${A_LIBS})
  # Parsing Qt's headers takes most of the time of a compilation. The lowest folder precompiles
  # them for all. clang-tidy reads each file without them, so a missing include is noticed there.
  if(A_LEVEL EQUAL 0)
    target_precompile_headers(${target} PRIVATE
      <algorithm> <array> <functional> <memory> <optional> <vector>
      <QApplication> <QDBusConnection> <QDir> <QFile> <QFileInfo> <QImage> <QKeyEvent> <QLabel>
      <QMessageBox> <QMouseEvent> <QPainter> <QPushButton> <QTimer> <QToolButton> <QVBoxLayout>)
  else()
    target_precompile_headers(${target} REUSE_FROM lumi_platform)
  endif()
  if(A_NO_WIDGETS AND "Widgets" IN_LIST A_QT)
    message(FATAL_ERROR "${folder} is NO_WIDGETS but asks for Qt6::Widgets")
  endif()
  foreach(module IN LISTS A_QT)
    target_link_libraries(${target} PUBLIC Qt6::${module})
  endforeach()
  set(allowed ${folder})
  foreach(dep IN LISTS A_DEPENDS)
    string(REPLACE "/" "_" depName ${dep})
    if(NOT TARGET lumi_${depName})
      message(FATAL_ERROR "${folder} depends on ${dep}, which is not below it")
    endif()
    get_target_property(level lumi_${depName} LUMI_LEVEL)
    if(level GREATER_EQUAL A_LEVEL)
      message(FATAL_ERROR "layering: ${folder} (${A_LEVEL}) must not link ${dep} (${level})")
    endif()
    target_link_libraries(${target} PUBLIC lumi_${depName})
    get_target_property(inherited lumi_${depName} LUMI_ALLOWED)
    list(APPEND allowed ${inherited})
  endforeach()
  list(REMOVE_DUPLICATES allowed)
  set_target_properties(${target} PROPERTIES LUMI_ALLOWED "${allowed}")
  if(BUILD_TESTING)
    set(headers "")
    if(A_NO_WIDGETS)
      get_target_property(headers Qt6::Widgets INTERFACE_INCLUDE_DIRECTORIES)
      list(FILTER headers INCLUDE REGEX "/QtWidgets$")
    endif()
    add_test(NAME layers.${name} COMMAND ${CMAKE_COMMAND} -DROOT=${PROJECT_SOURCE_DIR}
      -DFOLDER=${folder} "-DALLOWED=${allowed}" -DWIDGET_HEADERS=${headers}
      -P ${PROJECT_SOURCE_DIR}/cmake/CheckIncludes.cmake)
  endif()
endfunction()
