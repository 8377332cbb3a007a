# SPDX-License-Identifier: MIT
# What a build for Windows has more; scripts/windows makes one.
if(NOT WIN32)
  return()
endif()

# Qt's own compiler of resources runs here and can pack more than the Qt of there unpacks.
set_property(TARGET tarvelo_app PROPERTY AUTORCC_OPTIONS --no-zstd)

# Of the system's headers only what the program calls, without macros such as min and max.
foreach(target tarvelo_app tarvelo_export)
  target_compile_definitions(${target} PRIVATE NOMINMAX UNICODE WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
endforeach()

# The version that the system shows of the file, its icon, and what it may expect of the program.
set(TARVELO_ICON ${PROJECT_SOURCE_DIR}/resources/tarvelo.ico)
set(TARVELO_MANIFEST ${PROJECT_SOURCE_DIR}/packaging/windows/Tarvelo.manifest)
configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/Tarvelo.rc.in ${PROJECT_BINARY_DIR}/Tarvelo.rc @ONLY)
target_sources(Tarvelo PRIVATE ${PROJECT_BINARY_DIR}/Tarvelo.rc)
set_source_files_properties(${PROJECT_BINARY_DIR}/Tarvelo.rc TARGET_DIRECTORY Tarvelo PROPERTIES
  OBJECT_DEPENDS "${TARVELO_ICON};${TARVELO_MANIFEST}" COMPILE_OPTIONS "-c;65001")
