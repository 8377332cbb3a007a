# SPDX-License-Identifier: MIT
# tarvelo_module(FOLDER SOURCES files... USES folders... LIBRARIES libraries...)
#
# One static library per folder, named tarvelo_ and the folder. A file includes its own folder and the folders among
# USES, no others: the test "layering" holds that, by the list that tarvelo_write_layers() leaves in the build folder.
function(tarvelo_module folder)
  cmake_parse_arguments(arg "" "" "SOURCES;USES;LIBRARIES" ${ARGN})
  tarvelo_target(name ${folder})
  add_library(${name} STATIC ${arg_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  foreach(used IN LISTS arg_USES)
    tarvelo_target(usedName ${used})
    target_link_libraries(${name} PUBLIC ${usedName})
  endforeach()
  target_link_libraries(${name} PUBLIC ${arg_LIBRARIES} PRIVATE tarvelo_warnings)
  string(JOIN " " line ${folder} ${arg_USES})
  set_property(GLOBAL APPEND_STRING PROPERTY TARVELO_LAYERS "${line}\n")
endfunction()

# The name of a folder's library.
function(tarvelo_target variable folder)
  string(REPLACE "/" "_" name "tarvelo_${folder}")
  set(${variable} ${name} PARENT_SCOPE)
endfunction()

# Writes layers.txt: a line for every folder, followed by those that it may include.
function(tarvelo_write_layers)
  get_property(layers GLOBAL PROPERTY TARVELO_LAYERS)
  file(WRITE ${PROJECT_BINARY_DIR}/layers.txt "${layers}")
endfunction()
