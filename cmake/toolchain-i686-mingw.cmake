# Cross build for 32-bit Windows: MinGW-w64 GCC (POSIX threads) and the kit that scripts/windows-kit makes.
# The kit's folder comes from the variable VELM_WINDOWS_KIT_DIR, of the cache or of the environment.

if(NOT VELM_WINDOWS_KIT_DIR)
    set(VELM_WINDOWS_KIT_DIR "$ENV{VELM_WINDOWS_KIT_DIR}")
endif()
if(NOT IS_DIRECTORY "${VELM_WINDOWS_KIT_DIR}")
    message(FATAL_ERROR
        "VELM_WINDOWS_KIT_DIR is not the folder of the 32-bit Windows kit: \"${VELM_WINDOWS_KIT_DIR}\". "
        "Run scripts/test-windows, or: export VELM_WINDOWS_KIT_DIR=\"$(scripts/windows-kit)\"")
endif()
set(VELM_WINDOWS_KIT_DIR "${VELM_WINDOWS_KIT_DIR}" CACHE PATH "Folder of the 32-bit Windows kit")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VELM_WINDOWS_KIT_DIR)

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH ${VELM_WINDOWS_KIT_DIR} ${VELM_WINDOWS_KIT_DIR}/qt5 /usr/i686-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/run-windows)
