# Fails when an include points from a lower folder of src/ to a higher one, or when a
# folder of the Qt-free library includes a Qt header. The folders from the ground
# floor up; folders on one line stand side by side and may use each other. Every
# folder of src/ must be listed: a new folder takes its place here first.
#   cmake -DSRC_DIR=<src> [-DCORE_FILES=<list>] -P CheckLayers.cmake
set(qt_free_layers
  "runtime"
  "core"
  "input;formats"
  "classify"
  "road"
  "sbtn"
  "profile"
  "log"
  "cli")
set(qt_layers
  "runtime/ui"
  "core/ui"
  "views/chart"
  "report;info;log/ui"
  "input/ui;views"
  "cli/ui"
  "app")

set(rank 0)
foreach(kind qt_free qt)
  foreach(layer IN LISTS ${kind}_layers)
    string(REPLACE ";" " " names "${layer}")
    separate_arguments(names)
    foreach(folder IN LISTS names)
      set(rank_${folder} ${rank})
      set(qt_${folder} ${kind})
    endforeach()
    math(EXPR rank "${rank} + 1")
  endforeach()
endforeach()

set(faults "")
# Headers of every ending count; an include in angle brackets counts too, since src/
# is an include folder of its own and <views/X.h> reaches a screen as "views/X.h" does.
file(GLOB_RECURSE files RELATIVE ${SRC_DIR} ${SRC_DIR}/*.h ${SRC_DIR}/*.hpp ${SRC_DIR}/*.inl ${SRC_DIR}/*.ipp
     ${SRC_DIR}/*.cpp ${SRC_DIR}/*.cc)
foreach(f IN LISTS files)
  get_filename_component(folder ${f} DIRECTORY)
  if(NOT DEFINED rank_${folder})
    list(APPEND faults "${f}: the folder ${folder} has no place among the layers")
    continue()
  endif()
  file(STRINGS ${SRC_DIR}/${f} lines REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"]")
  foreach(line IN LISTS lines)
    if(NOT line MATCHES "include[ \t]*([<\"])([^>\"]+)[>\"]")
      continue()
    endif()
    set(bracket ${CMAKE_MATCH_1})
    set(target ${CMAKE_MATCH_2})
    # Qt's headers: <QString>, <QtCore/QString>, and the lower-case <qstring.h> forms.
    if(bracket STREQUAL "<" AND target MATCHES "^(Q[A-Za-z]|q[a-z0-9_]*\\.h$)")
      if(qt_${folder} STREQUAL "qt_free")
        list(APPEND faults "${f}: a Qt header in the Qt-free library (${line})")
      endif()
      continue()
    endif()
    get_filename_component(to ${target} DIRECTORY)
    if(to STREQUAL "" OR to STREQUAL folder)
      continue()
    endif()
    if(NOT DEFINED rank_${to})
      # A library's own folder (<gtest/gtest.h>, <dragonbox/dragonbox.h>) is no layer of ours.
      if(bracket STREQUAL "\"")
        list(APPEND faults "${f}: includes ${target} from a folder with no place among the layers")
      endif()
    elseif(rank_${to} GREATER rank_${folder})
      list(APPEND faults "${f}: includes ${target} from the higher folder ${to}")
    endif()
  endforeach()
endforeach()

# The Qt-free library is built from Qt-free folders only.
if(DEFINED CORE_FILES)
  file(READ ${CORE_FILES} core_files)
  foreach(abs IN LISTS core_files)
    file(RELATIVE_PATH f ${SRC_DIR} ${abs})
    get_filename_component(folder ${f} DIRECTORY)
    if(NOT qt_${folder} STREQUAL "qt_free")
      list(APPEND faults "${f}: in the Qt-free library but in the Qt folder ${folder}")
    endif()
  endforeach()
endif()

list(LENGTH files count)
if(faults)
  list(JOIN faults "\n  " text)
  message(FATAL_ERROR "layer faults:\n  ${text}")
endif()
message(STATUS "${count} files, every include points down or sideways")
