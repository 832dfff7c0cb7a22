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

configure_file(cmake/mainControl.pc.in mainControl.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/mainControl.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
