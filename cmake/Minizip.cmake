# minizip, and zlib below it: the machine's own, or those of the kit of a cross build.

find_path(VELM_MINIZIP_INCLUDE_DIR minizip/unzip.h REQUIRED)
find_library(VELM_MINIZIP_LIBRARY minizip REQUIRED)
find_package(ZLIB REQUIRED)
add_library(Minizip INTERFACE)
target_include_directories(Minizip SYSTEM INTERFACE ${VELM_MINIZIP_INCLUDE_DIR})
target_link_libraries(Minizip INTERFACE ${VELM_MINIZIP_LIBRARY} ZLIB::ZLIB)
