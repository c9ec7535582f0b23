# velm_header_check compiles every public header on its own: each must be complete without another.

file(GLOB headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/include include/*.h)
set(header_sources)
foreach(header IN LISTS headers)
    set(source ${PROJECT_BINARY_DIR}/header_check/${header}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "#include \"@header@\"\n#include \"@header@\"\n" @ONLY)
    list(APPEND header_sources ${source})
endforeach()
add_library(velm_header_check OBJECT ${header_sources})
target_link_libraries(velm_header_check PRIVATE Velm::Common velm_flags)
