# What `cpack` makes: VelmCommon-<version>-win32.zip, which runs on its own, and the debug information for it in
# VelmCommon-<version>-win32-symbols.zip, to be unpacked over it; elsewhere an archive for the system's own Qt.

if(WIN32)
    set(VELM_LICENSE_DIR licenses)
    set(system win32)
    set(CPACK_GENERATOR ZIP)
else()
    set(VELM_LICENSE_DIR ${CMAKE_INSTALL_DOCDIR})
    string(TOLOWER ${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR} system)
    set(CPACK_GENERATOR TGZ)
endif()

install(FILES LICENSE DESTINATION ${VELM_LICENSE_DIR} RENAME VelmCommon.txt)
if(CMAKE_CROSSCOMPILING AND MINGW)
    configure_file(cmake/InstallRuntime.cmake.in InstallRuntime.cmake @ONLY)
    install(SCRIPT ${PROJECT_BINARY_DIR}/InstallRuntime.cmake)
elseif(UNIX)
    # What goes into the library and its bundle.
    foreach(part RapidJSON:rapidjson-dev QtTranslations:qttranslations5-l10n)
        string(REGEX MATCH "^(.+):(.+)$" part ${part})
        install(FILES /usr/share/doc/${CMAKE_MATCH_2}/copyright
            DESTINATION ${VELM_LICENSE_DIR} RENAME ${CMAKE_MATCH_1}.txt OPTIONAL)
    endforeach()
endif()

set(CPACK_PACKAGE_VENDOR VelmCommon)
set(CPACK_PACKAGE_FILE_NAME VelmCommon-${PROJECT_VERSION}-${system})
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL Unspecified)
set(CPACK_ARCHIVE_UNSPECIFIED_FILE_NAME ${CPACK_PACKAGE_FILE_NAME})
if(MINGW)
    list(APPEND CPACK_COMPONENTS_ALL symbols)
    set(CPACK_ARCHIVE_SYMBOLS_FILE_NAME ${CPACK_PACKAGE_FILE_NAME}-symbols)
endif()
include(CPack)
