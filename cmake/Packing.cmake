# What the module SmartTable packs and reads XML with: libdeflate and pugixml, the machine's own, or those of the kit of a
# cross build.

find_path(VELM_LIBDEFLATE_INCLUDE_DIR libdeflate.h REQUIRED)
find_library(VELM_LIBDEFLATE_LIBRARY NAMES deflate libdeflate deflatestatic REQUIRED)
add_library(Libdeflate INTERFACE)
target_include_directories(Libdeflate SYSTEM INTERFACE ${VELM_LIBDEFLATE_INCLUDE_DIR})
target_link_libraries(Libdeflate INTERFACE ${VELM_LIBDEFLATE_LIBRARY})
find_package(pugixml CONFIG REQUIRED)
