# lib_mainControl.so, whose version script hides what is not in exports.txt.
set(version_script ${CMAKE_CURRENT_BINARY_DIR}/exports.map)
list(JOIN exported_names ";\n    " exports)
file(CONFIGURE OUTPUT ${version_script} CONTENT "{\n  global:\n    @exports@;\n  local: *;\n};\n" @ONLY)

add_library(mainControl SHARED $<TARGET_OBJECTS:mainControl_code>)
set_target_properties(mainControl PROPERTIES
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  LINK_DEPENDS ${version_script})

# The C compiler links the library, and nothing of the C++ runtime comes along. No other target is linked in this folder.
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")
target_link_options(mainControl PRIVATE
  LINKER:--version-script=${version_script}
  LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack LINKER:--gc-sections)
