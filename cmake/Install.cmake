include(CMakePackageConfigHelpers)

install(TARGETS mainControl EXPORT mainControlTargets)
install(DIRECTORY include/mainControl DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/mainControl)
install(EXPORT mainControlTargets NAMESPACE mainControl:: DESTINATION ${package_dir})
configure_package_config_file(cmake/mainControlConfig.cmake.in mainControlConfig.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(mainControlConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/mainControlConfig.cmake ${PROJECT_BINARY_DIR}/mainControlConfigVersion.cmake
  DESTINATION ${package_dir})

# What names a place of the installation is written while installing, since `cmake --install --prefix` may move it.
set(known_when_configuring
  PROJECT_SOURCE_DIR PROJECT_VERSION PROJECT_DESCRIPTION MAINCONTROL_BUILD_HOST
  CMAKE_INSTALL_BINDIR CMAKE_INSTALL_INCLUDEDIR CMAKE_INSTALL_LIBDIR CMAKE_INSTALL_SYSCONFDIR)
foreach(name IN LISTS known_when_configuring)
  install(CODE "set(${name} [==[${${name}}]==])")
endforeach()
install(SCRIPT cmake/install_placed.cmake)
