# Runs while installing: installs the files that name other places of the installation.
include(GNUInstallDirs)

function(install_configured template folder)
  cmake_path(GET template STEM LAST_ONLY name)
  set(file ${folder}/${name})
  message(STATUS "Installing: $ENV{DESTDIR}${file}")
  configure_file(${PROJECT_SOURCE_DIR}/${template} $ENV{DESTDIR}${file} @ONLY
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  set(CMAKE_INSTALL_MANIFEST_FILES ${CMAKE_INSTALL_MANIFEST_FILES} ${file} PARENT_SCOPE)
endfunction()

# The files of pkg-config find the rest from where they lie themselves, so that the whole may be moved.
set(pkgconfig_dir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${pkgconfig_dir} OUTPUT_VARIABLE to_prefix)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_INCLUDEDIR BASE_DIRECTORY ${pkgconfig_dir} OUTPUT_VARIABLE to_includedir)
install_configured(cmake/mainControl.pc.in ${pkgconfig_dir})

if(MAINCONTROL_BUILD_HOST)
  install_configured(cmake/mainControl-host.pc.in ${pkgconfig_dir})
  install_configured(packaging/systemd/kr-at-server.service.in ${CMAKE_INSTALL_PREFIX}/lib/systemd/system)
  file(INSTALL ${PROJECT_SOURCE_DIR}/packaging/systemd/kr-at-server.default
    DESTINATION ${CMAKE_INSTALL_FULL_SYSCONFDIR}/default RENAME kr-at-server)
  file(INSTALL ${PROJECT_SOURCE_DIR}/packaging/systemd/kr-at-server.sysusers
    DESTINATION ${CMAKE_INSTALL_PREFIX}/lib/sysusers.d RENAME kr-at-server.conf)
endif()
