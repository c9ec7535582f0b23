# Real message boxes on a virtual screen: that of a question, and those of a library that is loaded without what belongs
# beside it.
# cmake -D BIN=<folder of the programs> -D SCRATCH=<folder> -D EMULATOR=<program> -P message_boxes.cmake

function(expect_output expected)
    execute_process(COMMAND ${EMULATOR} --display ${BIN}/velm_windows_probe.exe ${ARGN}
        RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE talk)
    string(REPLACE "\r" "" output "${output}")
    if(NOT status EQUAL 0 OR NOT output STREQUAL expected)
        message(FATAL_ERROR "exit code ${status}, expected:\n${expected}\nbut got:\n${output}\n${talk}")
    endif()
endfunction()

expect_output("box, icon, 测试: 删除要素？\nanswer 1\n" ask ${BIN}/VelmCommon.dll)

file(REMOVE_RECURSE ${SCRATCH})
file(COPY ${BIN}/VelmCommon.dll DESTINATION ${SCRATCH})
expect_output("box, icon, 错误: 无法找到资源文件[VelmResource.rcc
box, icon, 错误: 初始化资源文件失败！！！
box, no icon, 错误信息: 无法找到文件[adapter_qtinit.dll]
done
" load ${SCRATCH}/VelmCommon.dll)
