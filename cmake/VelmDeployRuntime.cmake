# velm_deploy_runtime(<folder>) puts what programs of the 32-bit Windows build load at run time beside them: the
# compiler's libraries, Qt and its platform and database plug-ins. Done while configuring, because
# tests run their programs already during the build to list their cases.
function(velm_deploy_runtime folder)
    set(qt ${VELM_WINDOWS_KIT_DIR}/qt5)
    file(GLOB libraries ${qt}/bin/*.dll)
    foreach(name libgcc_s_dw2-1.dll libstdc++-6.dll libwinpthread-1.dll)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
            OUTPUT_VARIABLE library OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        if(NOT EXISTS ${library})
            message(FATAL_ERROR "The compiler has no ${name}: is the variant with POSIX threads installed?")
        endif()
        list(APPEND libraries ${library})
    endforeach()
    # Leaves a file alone that is there with the same time.
    file(COPY ${libraries} ${qt}/plugins/platforms ${qt}/plugins/sqldrivers DESTINATION ${folder})
endfunction()
