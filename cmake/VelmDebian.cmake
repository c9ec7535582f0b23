# The Debian packages of the three components. What they need of the system dpkg-shlibdeps finds, but for plug-ins and
# for the packages of each other.

set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/PackageOptions.cmake)
set(CPACK_DEBIAN_PACKAGE_NAME velmcommon)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "VelmCommon developers <velmcommon@localhost>")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

set(library libvelmcommon${PROJECT_VERSION_MAJOR})
set(same_version "${library} (= ${PROJECT_VERSION})")
# What a package needs that is linked with a library, and that the loader's cache is to be made anew.
set(control ${PROJECT_BINARY_DIR}/debian)
set(shlibs)
foreach(name libSmartTable libVelmCommon)
    string(APPEND shlibs "${name} ${PROJECT_VERSION_MAJOR} ${same_version}\n")
endforeach()
file(CONFIGURE OUTPUT ${control}/shlibs CONTENT ${shlibs})
file(CONFIGURE OUTPUT ${control}/triggers CONTENT "activate-noawait ldconfig\n")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${control}/shlibs ${control}/triggers)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS libqt5sql5-sqlite)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SUGGESTS libqt5sql5-odbc)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION 
    "The library with what it looks for beside itself: what a feature code is and how it is drawn; the module SmartTable.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvelmcommon-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${same_version}, qtbase5-dev")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION 
    "Headers, the packages for CMake and pkg-config, and the documentation.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME velmcommon-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${same_version}")
set(CPACK_DEBIAN_TOOLS_DESCRIPTION 
    "The tool velm shows what a feature code means, checks a configuration and brings older ones into a database.")
foreach(component LIBRARY DEVELOPMENT TOOLS)
    set(CPACK_DEBIAN_${component}_FILE_NAME DEB-DEFAULT)
endforeach()
