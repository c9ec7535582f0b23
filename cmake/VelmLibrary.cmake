# The library. Its objects are compiled once: the shared library exports the public classes, and the tests of private
# parts and the benchmarks link the objects themselves.

set(VELM_SYSTEM $<IF:$<PLATFORM_ID:Windows>,Windows,Unix>)

# Files that take their place whole, and long paths. It stands on its own, so that each module can hold its copy.
add_library(velm_files STATIC
    common/files/AtomicFile.cpp
    common/files/DatabasePath.cpp
    common/files/FileLock.cpp
    common/platform/FileSystem${VELM_SYSTEM}.cpp)
set_target_properties(velm_files PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
target_include_directories(velm_files PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(velm_files PUBLIC Qt5::Core PRIVATE velm_flags)

add_library(velm_objects OBJECT
    include/CVelmEvent.h  # for moc
    common/ChineseNumber.cpp
    common/CVelmBaseObject.cpp
    common/CVelmEvent.cpp
    common/CVelmFilePath.cpp
    common/CVelmFindFile.cpp
    common/CVelmMessage.cpp
    common/CVelmObjectManager.cpp
    common/CVelmRegTable.cpp
    common/CVelmString.cpp
    common/CVelmStringLists.cpp
    common/CVelmStringVariant.cpp
    common/FolderWalk.cpp
    common/Gb18030.cpp
    common/HostCalls.cpp
    common/Json.cpp
    common/JsonBinding.cpp
    common/JsonMerge.cpp
    common/MessageHandler.cpp
    common/Module.cpp
    common/Pinyin.cpp
    common/Process.cpp
    common/platform/Platform${VELM_SYSTEM}.cpp
    data/CVelmDatabase.cpp
    data/CVelmDatabaseSchema.cpp
    data/CVelmSaveUserData.cpp
    data/CVelmXmlManager.cpp
    data/ConfigDatabase.cpp
    data/Connection.cpp
    data/RowReading.cpp
    data/SqlText.cpp
    data/Statement.cpp
    data/TableReader.cpp
    data/WriteTransaction.cpp
    data/XmlBounds.cpp
    data/XmlDeclarations.cpp
    config/CVelmAnnotate.cpp
    config/CVelmAreaLine.cpp
    config/CVelmAttribute.cpp
    config/CVelmAttributeDB.cpp
    config/CVelmAttributeDef.cpp
    config/CVelmCmdSetting.cpp
    config/CVelmCodeManager.cpp
    config/CVelmConfigManager.cpp
    config/CVelmFrame.cpp
    config/CVelmIndex.cpp
    config/CVelmIndexDB.cpp
    config/CVelmIndexIni.cpp
    config/CVelmReadGlobaldefinesTable.cpp
    config/CVelmRecordManager.cpp
    config/CVelmSystemGlobal.cpp
    config/CVelmTBLManager.cpp
    config/CVelmWork.cpp
    config/CVelmWorkDB.cpp
    config/CVelmWorkDef.cpp
    config/ConfigJson.cpp
    config/ConfigRecord.cpp
    config/ConfigSources.cpp
    config/DefinitionFile.cpp
    config/DocumentCheck.cpp
    config/FieldConversion.cpp
    config/GenusLayout.cpp
    config/GlobalDefine.cpp
    config/GlobalParamStore.cpp
    config/SystemConfig.cpp
    calc/CVelmCalculate.cpp
    spatial/CVelmRTree.cpp
    spatial/CVelmRTreeDelete.cpp
    spatial/CVelmRTreeNode.cpp
    spatial/CVelmRTreePartition.cpp
    spatial/CVelmRTreeSearch.cpp
    spatial/CVelmRTreeSplit.cpp
    spatial/RTreeChoice.cpp
    spatial/RTreeNodePool.cpp
    spatial/RTreeSlots.cpp)
set_target_properties(velm_objects PROPERTIES
    AUTOMOC ON
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
target_compile_definitions(velm_objects PUBLIC VELMCOMMON_LIBRARY)
set_source_files_properties(config/CVelmSystemGlobal.cpp PROPERTIES
    COMPILE_DEFINITIONS VELM_VERSION="${PROJECT_VERSION}")
target_include_directories(velm_objects PUBLIC ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR})
target_link_libraries(velm_objects
    PUBLIC velm_files Qt5::Core Qt5::Gui Qt5::Widgets Qt5::Sql Qt5::Xml RapidJSON ${CMAKE_DL_LIBS}
    PRIVATE velm_flags)

add_library(VelmCommon SHARED common/platform/ModuleEntry${VELM_SYSTEM}.cpp)
add_library(Velm::Common ALIAS VelmCommon)
set_target_properties(VelmCommon PROPERTIES
    EXPORT_NAME Common
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})
if(MINGW)
    set_target_properties(VelmCommon PROPERTIES PREFIX "" IMPORT_PREFIX "lib")
elseif(NOT WIN32)
    # Qt keeps the address of the function that starts the library with the application object.
    target_link_options(VelmCommon PRIVATE -Wl,-z,nodelete)
endif()
target_include_directories(VelmCommon PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/VelmCommon>)
target_compile_features(VelmCommon PUBLIC cxx_std_17)
target_link_libraries(VelmCommon
    PUBLIC Qt5::Core Qt5::Gui Qt5::Widgets Qt5::Sql
    PRIVATE $<BUILD_INTERFACE:velm_objects> $<BUILD_INTERFACE:velm_flags>)
add_dependencies(VelmCommon velm_resources adapter_qtinit)
