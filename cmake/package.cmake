# SPDX-License-Identifier: MIT
# The archive for Linux: one folder with the program and all that is not part of every desktop, wherever it is unpacked.

# A version without its changes and its day is none.
file(STRINGS CHANGELOG.md heading REGEX "^## \\[${PROJECT_VERSION}\\] - [0-9-]+$")
if(NOT heading)
  message(FATAL_ERROR "CHANGELOG.md has no heading '## [${PROJECT_VERSION}] - YEAR-MONTH-DAY'")
endif()
string(REGEX REPLACE ".* - " "" TARVELO_RELEASE_DATE "${heading}")

if(NOT LINUX)
  return()
endif()

set(packaging ${PROJECT_SOURCE_DIR}/packaging/linux)
configure_file(${packaging}/org.tarvelo.Tarvelo.metainfo.xml.in org.tarvelo.Tarvelo.metainfo.xml @ONLY)

# The old kind of run path serves the libraries and plug-ins too, which have none of their own.
target_link_options(Tarvelo PRIVATE -Wl,--disable-new-dtags)
set_target_properties(Tarvelo PROPERTIES INSTALL_RPATH "$ORIGIN/lib")
install(TARGETS Tarvelo RUNTIME DESTINATION .)
install(FILES ${packaging}/qt.conf LICENSE THIRD-PARTY.md CHANGELOG.md SECURITY.md DESTINATION .)
install(DIRECTORY docs/pictures DESTINATION docs)
install(CODE "execute_process(
  COMMAND ${PROJECT_SOURCE_DIR}/packaging/guide-page ${PROJECT_SOURCE_DIR}/docs/guide.md
    \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/docs/guide.html\"
  COMMAND_ERROR_IS_FATAL ANY)")
install(FILES database/schema.sql database/read_only_user.sql DESTINATION database)
install(PROGRAMS ${packaging}/menu-entry DESTINATION .)
install(FILES ${packaging}/org.tarvelo.Tarvelo.desktop
  ${CMAKE_CURRENT_BINARY_DIR}/org.tarvelo.Tarvelo.metainfo.xml DESTINATION share)
install(FILES resources/icon/tarvelo.svg DESTINATION share/icons/scalable)
foreach(side 16 24 32 48 64 128 256)
  install(FILES resources/icon/tarvelo-${side}.png DESTINATION share/icons/${side}x${side} RENAME tarvelo.png)
endforeach()
set(fonts /usr/share/fonts/truetype)
set(carried_fonts
  ${fonts}/crosextra/Carlito-Regular.ttf
  ${fonts}/crosextra/Carlito-Bold.ttf
  ${fonts}/dejavu/DejaVuSansCondensed.ttf
  ${fonts}/dejavu/DejaVuSansCondensed-Bold.ttf)
install(FILES ${carried_fonts} DESTINATION fonts)

function(ask_qt variable property)
  get_target_property(qmake Qt6::qmake LOCATION)
  execute_process(COMMAND ${qmake} -query ${property}
    OUTPUT_VARIABLE value OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(${variable} ${value} PARENT_SCOPE)
endfunction()
ask_qt(translations QT_INSTALL_TRANSLATIONS)
ask_qt(plugins QT_INSTALL_PLUGINS)
install(FILES ${translations}/qtbase_ru.qm DESTINATION translations)
# The display, and the two ways to type letters that no key has. A theme plug-in would bring a whole desktop along.
set(carried_plugins
  platforms/libqxcb.so
  platforminputcontexts/libcomposeplatforminputcontextplugin.so
  platforminputcontexts/libibusplatforminputcontextplugin.so)
foreach(plugin IN LISTS carried_plugins)
  get_filename_component(folder ${plugin} DIRECTORY)
  install(FILES ${plugins}/${plugin} DESTINATION plugins/${folder})
endforeach()
list(TRANSFORM carried_plugins PREPEND ${plugins}/)
install(CODE "set(program \"$<TARGET_FILE:Tarvelo>\")
  set(plugins ${carried_plugins})
  set(other_files ${translations}/qtbase_ru.qm ${carried_fonts} /usr/include/firebird/Interface.h)")
install(SCRIPT ${packaging}/carry_libraries.cmake)

set(CPACK_GENERATOR TGZ)
set(CPACK_PACKAGE_FILE_NAME Tarvelo-${PROJECT_VERSION}-linux-x86_64)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
