include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS ts4core EXPORT ts4Targets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY src/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ts4
        FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE)
install(EXPORT ts4Targets NAMESPACE ts4:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ts4)
# The Qt layers each in an export of their own, so that using ts4::core
# alone needs no Qt.
foreach(layer IN ITEMS Sql Widgets)
  string(TOLOWER ${layer} name)
  if(TARGET ts4${name})
    install(TARGETS ts4${name} EXPORT ts4${layer}Targets
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
    install(EXPORT ts4${layer}Targets NAMESPACE ts4:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ts4)
  endif()
endforeach()

configure_package_config_file(cmake/ts4Config.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/ts4Config.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ts4)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ts4ConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ts4Config.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/ts4ConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ts4)
