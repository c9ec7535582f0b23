# Compiler settings of the project's own targets. They sit on one interface target that no consumer sees.

add_library(velm_flags INTERFACE)
# A fused or extended-precision operation would change how an area rounds and which branch an index picks.
if(MSVC)
    target_compile_options(velm_flags INTERFACE
        /utf-8 /permissive- /EHsc /W4 /WX /fp:precise $<$<EQUAL:${CMAKE_SIZEOF_VOID_P},4>:/arch:SSE2>
        # An exported class may hold, and derive from, what is not exported.
        /wd4251 /wd4275
        # Alignment makes a class larger.
        /wd4324)
    # Else <windows.h> makes macros of min and max.
    target_compile_definitions(velm_flags INTERFACE NOMINMAX)
else()
    target_compile_options(velm_flags INTERFACE
        -Wall -Wextra -Wpedantic -Werror
        -finput-charset=UTF-8 -fexec-charset=UTF-8
        -ffp-contract=off
        # A log line names its source file, not the machine that compiled it.
        -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/= -fmacro-prefix-map=${PROJECT_BINARY_DIR}/=)
endif()
target_compile_definitions(velm_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_KEYWORDS
    QT_DEPRECATED_WARNINGS
    # File, function and line of a log line, which Qt leaves out of release builds.
    QT_MESSAGELOGCONTEXT)

if(NOT MSVC AND CMAKE_SYSTEM_PROCESSOR MATCHES "^i[3-6]86$")
    target_compile_options(velm_flags INTERFACE -msse2 -mfpmath=sse -mstackrealign)
endif()

if(VELM_SANITIZE)
    target_compile_options(velm_flags INTERFACE
        -fsanitize=${VELM_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(velm_flags INTERFACE -fsanitize=${VELM_SANITIZE})
    # A program that loads the library has to bring the sanitizers' run-time along.
    set(VELM_CONSUMER_FLAGS -fsanitize=${VELM_SANITIZE})
endif()
