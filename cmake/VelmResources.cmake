# What the library looks for beside itself when it starts: the resource bundle with Qt's Chinese translation, and the
# companion library. Their names are the same on every system.

get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
execute_process(COMMAND ${qmake} -query QT_INSTALL_TRANSLATIONS
    OUTPUT_VARIABLE translations OUTPUT_STRIP_TRAILING_WHITESPACE)
if(CMAKE_CROSSCOMPILING AND MINGW)
    list(APPEND translations /usr/share/qt5/translations)  # the kit has none
endif()
find_file(VELM_QT_TRANSLATION qtbase_zh_CN.qm REQUIRED PATHS ${translations} NO_CMAKE_FIND_ROOT_PATH
    DOC "Qt's Chinese translation; on Debian in qttranslations5-l10n")

if(WIN32)
    set(VELM_MODULE_DIR ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
else()
    set(VELM_MODULE_DIR ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
endif()

# Qt's own qt_zh_CN.qm only names others, one for each of Qt's libraries; this is the one in use.
set(VELM_RESOURCE_LIST ${PROJECT_BINARY_DIR}/VelmResource.qrc)
file(CONFIGURE OUTPUT ${VELM_RESOURCE_LIST} @ONLY CONTENT [[
<RCC>
    <qresource prefix="/Translation">
        <file alias="qt_zh_CN.qm">@VELM_QT_TRANSLATION@</file>
    </qresource>
</RCC>
]])
add_custom_command(OUTPUT ${VELM_MODULE_DIR}/VelmResource.rcc
    COMMAND ${CMAKE_COMMAND} -E make_directory ${VELM_MODULE_DIR}
    COMMAND Qt5::rcc --binary ${VELM_RESOURCE_LIST} -o ${VELM_MODULE_DIR}/VelmResource.rcc
    DEPENDS ${VELM_RESOURCE_LIST} ${VELM_QT_TRANSLATION}
    COMMENT "Making VelmResource.rcc")
add_custom_target(velm_resources DEPENDS ${VELM_MODULE_DIR}/VelmResource.rcc)

add_library(adapter_qtinit MODULE common/platform/AdapterQtInit.cpp)
set_target_properties(adapter_qtinit PROPERTIES PREFIX "" SUFFIX .dll LIBRARY_OUTPUT_DIRECTORY ${VELM_MODULE_DIR})
target_link_libraries(adapter_qtinit PRIVATE velm_flags)
