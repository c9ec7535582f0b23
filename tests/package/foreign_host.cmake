# Runs a plain host, which knows nothing but the package that package.cmake has unpacked.
# cmake -D PROGRAM=<foreign_host.exe> -D PACKAGE=<scratch folder of package.cmake> -D SCRATCH=<folder>
#       -D EMULATOR=<program> -P foreign_host.cmake

file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})
set(room "${PACKAGE}/安装 包")
file(GLOB library ${room}/*/bin/VelmCommon.dll)
execute_process(COMMAND ${EMULATOR} ${PROGRAM} ${library} ${room}/root ${SCRATCH} COMMAND_ERROR_IS_FATAL ANY)
