# What `cpack` makes: VelmCommon-<version>-win32.zip, which runs on its own, and the debug information for it in
# VelmCommon-<version>-win32-symbols.zip, to be unpacked over it; elsewhere an archive for the system's own Qt and, on
# Debian, the packages libvelmcommon0, libvelmcommon-dev and velmcommon-tools.

if(WIN32)
    set(system win32)
    set(CPACK_GENERATOR ZIP)
else()
    string(TOLOWER ${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR} system)
    set(CPACK_GENERATOR TGZ)
    find_program(VELM_DPKG_SHLIBDEPS dpkg-shlibdeps)
    if(VELM_DPKG_SHLIBDEPS)
        list(APPEND CPACK_GENERATOR DEB)
    endif()
endif()

if(CMAKE_CROSSCOMPILING AND MINGW)
    configure_file(cmake/InstallRuntime.cmake.in InstallRuntime.cmake @ONLY)
    install(SCRIPT ${PROJECT_BINARY_DIR}/InstallRuntime.cmake COMPONENT library)
endif()

set(CPACK_PACKAGE_VENDOR VelmCommon)
set(CPACK_PACKAGE_FILE_NAME VelmCommon-${PROJECT_VERSION}-${system})
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_ALL library development tools)
if(MINGW)
    # Of everything else one archive.
    list(APPEND CPACK_COMPONENTS_ALL symbols)
    set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
    set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
    foreach(component LIBRARY DEVELOPMENT TOOLS)
        set(CPACK_COMPONENT_${component}_GROUP all)
    endforeach()
    set(CPACK_ARCHIVE_ALL_FILE_NAME ${CPACK_PACKAGE_FILE_NAME})
    set(CPACK_ARCHIVE_SYMBOLS_FILE_NAME ${CPACK_PACKAGE_FILE_NAME}-symbols)
endif()
include(cmake/VelmDebian.cmake)
include(CPack)
