# Installs the build into a scratch folder, builds examples/ against the installed package and runs it there.
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
run(${EMULATOR} ${example} 110102)
if(NOT output MATCHES "三角点 on layer KZD")
    message(FATAL_ERROR "the example answered: ${output}")
endif()
