# A shared library that supplies some of the functions of mainControl/host.h: its exports.map names all that it exports.
# It is installed beside lib_mainControl, with its headers, if it has any, in mainControl_host/.
function(add_host_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "OUTPUT_NAME" "SOURCES;HEADERS")
  set(version_script ${CMAKE_CURRENT_SOURCE_DIR}/exports.map)
  add_library(${name} SHARED ${arg_SOURCES})
  add_library(mainControl::${name} ALIAS ${name})
  target_include_directories(${name}
    PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:program_options>)
  target_link_options(${name} PRIVATE
    LINKER:--version-script=${version_script}
    LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
  set_target_properties(${name} PROPERTIES
    OUTPUT_NAME ${arg_OUTPUT_NAME}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    VISIBILITY_INLINES_HIDDEN ON
    LINK_DEPENDS ${version_script})

  install(TARGETS ${name} EXPORT mainControlTargets)
  if(arg_HEADERS)
    install(FILES ${arg_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/mainControl_host)
  endif()
endfunction()
