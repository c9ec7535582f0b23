# The module SmartTable, a library of its own. Like those of VelmCommon its objects are compiled once: the shared library
# exports what the header marks, and the tests of private parts link the objects themselves.

add_library(smarttable_objects OBJECT
    smarttable/Version.cpp
    smarttable/excel/Excel.cpp
    smarttable/excel/ExcelSheet.cpp
    smarttable/excel/Session.cpp
    smarttable/package/ContentTypes.cpp
    smarttable/package/Package.cpp
    smarttable/package/PackageReader.cpp
    smarttable/package/Packing.cpp
    smarttable/package/PartName.cpp
    smarttable/package/Relations.cpp
    smarttable/package/SmallXml.cpp
    smarttable/sheet/CellMarkup.cpp
    smarttable/sheet/CellReference.cpp
    smarttable/sheet/CellValue.cpp
    smarttable/sheet/NumberText.cpp
    smarttable/sheet/Row.cpp
    smarttable/sheet/RowTable.cpp
    smarttable/sheet/SharedTexts.cpp
    smarttable/sheet/SheetEditor.cpp
    smarttable/sheet/SheetNames.cpp
    smarttable/sheet/SheetReader.cpp
    smarttable/sheet/SheetSizes.cpp
    smarttable/sheet/SheetWriter.cpp
    smarttable/sheet/Styles.cpp
    smarttable/sheet/TextPool.cpp
    smarttable/sheet/Workbook.cpp
    smarttable/sheet/Worksheet.cpp
    smarttable/types/List.cpp
    smarttable/types/String.cpp
    smarttable/xml/Elements.cpp
    smarttable/xml/XmlScanner.cpp
    smarttable/xml/XmlText.cpp)
set_target_properties(smarttable_objects PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
target_compile_definitions(smarttable_objects PUBLIC SMARTTABLE_LIBRARY)
set_source_files_properties(smarttable/Version.cpp PROPERTIES
    COMPILE_DEFINITIONS VELM_VERSION="${PROJECT_VERSION}")
target_include_directories(smarttable_objects PUBLIC ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR})
target_link_libraries(smarttable_objects
    PUBLIC velm_zip velm_files Qt5::Core Libdeflate pugixml::pugixml
    PRIVATE velm_flags)

add_library(SmartTable SHARED)
add_library(Velm::SmartTable ALIAS SmartTable)
set_target_properties(SmartTable PROPERTIES
    LINKER_LANGUAGE CXX
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})
if(MINGW)
    set_target_properties(SmartTable PROPERTIES PREFIX "" IMPORT_PREFIX "lib")
endif()
target_include_directories(SmartTable PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/VelmCommon>)
target_compile_features(SmartTable PUBLIC cxx_std_17)
target_link_libraries(SmartTable
    PUBLIC Qt5::Core
    PRIVATE $<BUILD_INTERFACE:smarttable_objects> $<BUILD_INTERFACE:velm_flags>)
