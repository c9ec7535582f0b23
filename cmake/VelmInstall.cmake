# What `cmake --install` puts where, and the package that find_package(VelmCommon) loads.

set(VELM_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VelmCommon)

install(TARGETS VelmCommon EXPORT VelmCommonTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VelmCommon)
install(EXPORT VelmCommonTargets NAMESPACE Velm:: DESTINATION ${VELM_PACKAGE_DIR})

configure_package_config_file(cmake/VelmCommonConfig.cmake.in VelmCommonConfig.cmake
    INSTALL_DESTINATION ${VELM_PACKAGE_DIR})
write_basic_package_version_file(VelmCommonConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/VelmCommonConfig.cmake
    ${PROJECT_BINARY_DIR}/VelmCommonConfigVersion.cmake
    DESTINATION ${VELM_PACKAGE_DIR})
