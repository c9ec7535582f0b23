# RapidJSON is headers only and the same for every system, so a cross build takes the machine's own. They get a folder of
# their own, since nothing else of the machine's headers may be seen there.

find_path(VELM_RAPIDJSON_INCLUDE_DIR rapidjson/document.h REQUIRED NO_CMAKE_FIND_ROOT_PATH)
file(COPY ${VELM_RAPIDJSON_INCLUDE_DIR}/rapidjson DESTINATION ${PROJECT_BINARY_DIR}/rapidjson)
add_library(RapidJSON INTERFACE)
target_include_directories(RapidJSON SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/rapidjson)
