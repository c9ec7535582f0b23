# velm_ship_binary(<target> <description>) makes of a Windows binary what can be handed out: it has a version resource
# with that description and, built with MinGW, its debug information apart in <file>.debug beside it.
# velm_keep_symbols(<target>...) gives objects that go into such binaries the debug information for it.
# Both do nothing on other systems.

if(WIN32)
    enable_language(RC)
endif()

function(velm_ship_binary target description)
    if(WIN32)
        velm_add_version_resource(${target} ${description})
    endif()
    velm_keep_symbols(${target})
    if(MINGW)
        velm_split_symbols(${target})
    endif()
endfunction()

# The objects are a target of their own, since the compiler's flags of ${target} mean nothing to windres.
function(velm_add_version_resource target description)
    get_target_property(type ${target} TYPE)
    set(VELM_FILE_TYPE VFT_DLL)
    set(suffix .dll)
    if(type STREQUAL EXECUTABLE)
        set(VELM_FILE_TYPE VFT_APP)
        set(suffix .exe)
    endif()
    set(VELM_INTERNAL_NAME ${target})
    set(VELM_FILE_NAME ${target}${suffix})
    set(VELM_FILE_DESCRIPTION ${description})
    file(STRINGS ${PROJECT_SOURCE_DIR}/LICENSE VELM_COPYRIGHT REGEX "^Copyright")
    configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${PROJECT_BINARY_DIR}/version/${target}.rc @ONLY)
    add_library(velm_version_${target} OBJECT ${PROJECT_BINARY_DIR}/version/${target}.rc)
    target_sources(${target} PRIVATE $<TARGET_OBJECTS:velm_version_${target}>)
endfunction()

# Functions and lines, enough for a backtrace. The kit and the build folder may lie in the source folder: GCC takes the
# last map that fits.
function(velm_keep_symbols)
    if(MINGW)
        foreach(target IN LISTS ARGN)
            target_compile_options(${target} PRIVATE
                $<$<CONFIG:Release>:-g1>
                -fdebug-prefix-map=${PROJECT_SOURCE_DIR}=.
                -fdebug-prefix-map=${PROJECT_BINARY_DIR}=build
                -fdebug-prefix-map=${VELM_WINDOWS_KIT_DIR}=kit)
        endforeach()
    endif()
endfunction()

function(velm_split_symbols target)
    set(file $<TARGET_FILE:${target}>)
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_OBJCOPY} --only-keep-debug ${file} ${file}.debug
        COMMAND ${CMAKE_STRIP} --strip-unneeded ${file}
        COMMAND ${CMAKE_OBJCOPY} --add-gnu-debuglink=${file}.debug ${file})
    install(FILES ${file}.debug DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT symbols EXCLUDE_FROM_ALL)
endfunction()
