# What `cmake --install` puts where, and the packages that find_package(VelmCommon) and pkg-config load. Components:
# "library" is what a program needs at run time, "development" what builds one, "tools" is the command-line tool.

set(VELM_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VelmCommon)
if(WIN32)
    set(VELM_INSTALL_MODULE_DIR ${CMAKE_INSTALL_BINDIR})
    set(VELM_LICENSE_DIR licenses)
    set(VELM_DOC_DIR .)
else()
    set(VELM_INSTALL_MODULE_DIR ${CMAKE_INSTALL_LIBDIR})
    set(VELM_LICENSE_DIR ${CMAKE_INSTALL_DOCDIR})
    set(VELM_DOC_DIR ${CMAKE_INSTALL_DOCDIR})
endif()

install(TARGETS VelmCommon SmartTable EXPORT VelmCommonTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(TARGETS adapter_qtinit LIBRARY DESTINATION ${VELM_INSTALL_MODULE_DIR} COMPONENT library)
install(FILES ${VELM_MODULE_DIR}/VelmResource.rcc DESTINATION ${VELM_INSTALL_MODULE_DIR} COMPONENT library)
install(FILES LICENSE DESTINATION ${VELM_LICENSE_DIR} RENAME VelmCommon.txt COMPONENT library)
if(UNIX)
    # What goes into the libraries and the bundle.
    foreach(part RapidJSON:rapidjson-dev QtTranslations:qttranslations5-l10n)
        string(REGEX MATCH "^(.+):(.+)$" part ${part})
        install(FILES /usr/share/doc/${CMAKE_MATCH_2}/copyright
            DESTINATION ${VELM_LICENSE_DIR} RENAME ${CMAKE_MATCH_1}.txt COMPONENT library OPTIONAL)
    endforeach()
endif()

install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VelmCommon COMPONENT development)
install(EXPORT VelmCommonTargets NAMESPACE Velm:: DESTINATION ${VELM_PACKAGE_DIR} COMPONENT development)
configure_package_config_file(cmake/VelmCommonConfig.cmake.in VelmCommonConfig.cmake
    INSTALL_DESTINATION ${VELM_PACKAGE_DIR})
write_basic_package_version_file(VelmCommonConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/VelmCommonConfig.cmake
    ${PROJECT_BINARY_DIR}/VelmCommonConfigVersion.cmake
    DESTINATION ${VELM_PACKAGE_DIR} COMPONENT development)
if(NOT WIN32)
    set(VELM_PC_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
    # The way back is found from any prefix, so that the folder may be moved.
    file(RELATIVE_PATH VELM_PC_TO_PREFIX /prefix/${VELM_PC_DIR} /prefix)
    configure_file(cmake/VelmCommon.pc.in VelmCommon.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/VelmCommon.pc DESTINATION ${VELM_PC_DIR} COMPONENT development)
endif()

# The pages name each other by where they lie in the source folder.
install(FILES README.md CHANGELOG.md LICENSE DESTINATION ${VELM_DOC_DIR} COMPONENT development)
install(DIRECTORY docs/ DESTINATION ${VELM_DOC_DIR}/docs COMPONENT development FILES_MATCHING PATTERN "*.md")
