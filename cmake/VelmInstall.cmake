# What `cmake --install` puts where, and the package that find_package(VelmCommon) loads.

set(VELM_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VelmCommon)

install(TARGETS VelmCommon EXPORT VelmCommonTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(WIN32)
    set(VELM_INSTALL_MODULE_DIR ${CMAKE_INSTALL_BINDIR})
else()
    set(VELM_INSTALL_MODULE_DIR ${CMAKE_INSTALL_LIBDIR})
endif()
install(TARGETS adapter_qtinit LIBRARY DESTINATION ${VELM_INSTALL_MODULE_DIR})
install(FILES ${VELM_MODULE_DIR}/VelmResource.rcc DESTINATION ${VELM_INSTALL_MODULE_DIR})
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VelmCommon)
install(EXPORT VelmCommonTargets NAMESPACE Velm:: DESTINATION ${VELM_PACKAGE_DIR})

configure_package_config_file(cmake/VelmCommonConfig.cmake.in VelmCommonConfig.cmake
    INSTALL_DESTINATION ${VELM_PACKAGE_DIR})
write_basic_package_version_file(VelmCommonConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/VelmCommonConfig.cmake
    ${PROJECT_BINARY_DIR}/VelmCommonConfigVersion.cmake
    DESTINATION ${VELM_PACKAGE_DIR})
