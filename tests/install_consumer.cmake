# Installs the build into a scratch folder, builds examples/ against the installed package and runs it there. The README
# shows the same program.
# cmake -D BUILD=<build folder> -D SOURCE=<source folder> -D SCRATCH=<folder> -D TOOLCHAIN=<file or empty>
#       -D EMULATOR=<program or empty> -D SUFFIX=<of programs> -D BUILD_TYPE=<type> -P install_consumer.cmake

set(prefix ${SCRATCH}/prefix)
file(REMOVE_RECURSE ${SCRATCH})

function(run)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "failed (${status}): ${ARGV}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})
if(BUILD_TYPE STREQUAL "Release")  # other builds hold debug information
    execute_process(COMMAND grep -rlF ${SOURCE} ${prefix} RESULT_VARIABLE status OUTPUT_VARIABLE output)
    if(NOT status EQUAL 1)
        message(FATAL_ERROR "these name the folder they were built in: ${output}")
    endif()
endif()

set(options -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=${BUILD_TYPE} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
if(TOOLCHAIN)
    # A cross build looks for packages below its root paths only.
    list(APPEND options -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -DVelmCommon_DIR=${prefix}/lib/cmake/VelmCommon)
endif()
run(${CMAKE_COMMAND} -S ${SOURCE}/examples -B ${SCRATCH}/examples -G Ninja ${options})
run(${CMAKE_COMMAND} --build ${SCRATCH}/examples)

set(example ${SCRATCH}/examples/feature_name${SUFFIX})
if(TOOLCHAIN)
    # Windows finds libraries, and VelmCommon its bundle, beside the program.
    file(GLOB libraries ${prefix}/bin/*.dll ${prefix}/bin/*.rcc ${BUILD}/bin/*.dll)
    file(COPY ${libraries} ${BUILD}/bin/sqldrivers ${BUILD}/bin/platforms DESTINATION ${SCRATCH}/examples)
    file(COPY ${libraries} ${BUILD}/bin/sqldrivers ${BUILD}/bin/platforms DESTINATION ${prefix}/bin)
endif()
run(${EMULATOR} ${prefix}/bin/velm${SUFFIX} init ${SCRATCH}/root)
set(ENV{VELM_ROOT} ${SCRATCH}/root)
run(${EMULATOR} ${prefix}/bin/velm${SUFFIX} doctor)
run(${EMULATOR} ${prefix}/bin/velm${SUFFIX} lookup 110102)

file(READ ${SOURCE}/README.md readme)
file(READ ${SOURCE}/examples/feature_name.cpp program)
string(FIND "${readme}" "```cpp\n${program}```" place)
if(place EQUAL -1)
    message(FATAL_ERROR "README.md shows another program than examples/feature_name.cpp")
endif()
set(ENV{LC_ALL} C.UTF-8)
set(to_utf8)
if(TOOLCHAIN)
    set(to_utf8 COMMAND iconv -f GBK -t UTF-8)
endif()
run(${EMULATOR} ${example} 310301 ${to_utf8})
string(STRIP "${output}" output)
string(FIND "${readme}" "prints `${output}`" place)
if(NOT output MATCHES "^一般房屋 on layer JMD_M$" OR place EQUAL -1)
    message(FATAL_ERROR "the example printed, unlike what the README says: ${output}")
endif()
