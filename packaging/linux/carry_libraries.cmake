# SPDX-License-Identifier: MIT
# Puts the libraries that `program` and `plugins` load into lib/, and the licences of these and of `other_files` into
# licenses/.

# What every desktop has, and what fits the machine's display drivers, fonts, buses and database client only when it is
# the system's own: the C and C++ libraries, GL, X11, fontconfig, and what these load themselves.
set(demanded
  ld-linux-x86-64 libc libm libdl libpthread librt libgcc_s "libstdc\\+\\+"
  libGL libEGL libGLX libOpenGL libGLdispatch
  libX11 libX11-xcb libxcb libXau libXdmcp libSM libICE
  libfontconfig libfreetype libharfbuzz libpng16 libz libexpat
  "libglib-2\\.0" libdbus-1)
list(TRANSFORM demanded REPLACE "(.+)" "^\\1\\\\.so")

set(root "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}")
file(GET_RUNTIME_DEPENDENCIES
  EXECUTABLES ${program}
  LIBRARIES ${plugins}
  PRE_EXCLUDE_REGEXES ${demanded}
  RESOLVED_DEPENDENCIES_VAR libraries)
file(MAKE_DIRECTORY "${root}/lib")
foreach(library IN LISTS libraries)
  get_filename_component(name ${library} NAME)
  # Under the name that it is loaded by, and no link, which not every file system has.
  file(REAL_PATH ${library} file)
  message(STATUS "Installing: ${root}/lib/${name}")
  file(COPY_FILE ${file} "${root}/lib/${name}")
endforeach()

execute_process(
  COMMAND ${CMAKE_CURRENT_LIST_DIR}/../collect-licences "${root}/licenses" ${libraries} ${plugins} ${other_files}
  COMMAND_ERROR_IS_FATAL ANY)
