# The library. Its objects are compiled once: the shared library exports the public classes, and the tests of private
# parts and the benchmarks link the objects themselves.

set(VELM_SYSTEM $<IF:$<PLATFORM_ID:Windows>,Windows,Unix>)

# Files that take their place whole, and long paths. It stands on its own, so that each module can hold its copy.
add_library(velm_files STATIC
    common/files/AtomicFile.cpp
    common/files/DatabasePath.cpp
    common/files/FileLock.cpp
    common/files/StagedFile.cpp
    common/files/StagingFolder.cpp
    common/files/SystemFile.cpp
    common/platform/FileCalls${VELM_SYSTEM}.cpp
    common/platform/FileSystem${VELM_SYSTEM}.cpp
    common/platform/FileWindows.h
    common/platform/FolderRemoval${VELM_SYSTEM}.cpp
    common/platform/SystemError${VELM_SYSTEM}.cpp)
set_target_properties(velm_files PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
target_include_directories(velm_files PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(velm_files PUBLIC Qt5::Core PRIVATE velm_flags)

# Zip archives, which VelmCommon and SmartTable read and write; on its own for the same reason.
add_library(velm_zip STATIC
    archive/Deflater.cpp
    archive/EntryName.cpp
    archive/ZipDevice.cpp
    archive/ZipDirectory.cpp
    archive/ZipFields.cpp
    archive/ZipEntry.h
    archive/ZipPacked.h
    archive/ZipReader.cpp
    archive/ZipTime.cpp
    archive/ZipWriter.cpp
    common/platform/Clock${VELM_SYSTEM}.cpp)
set_target_properties(velm_zip PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
target_include_directories(velm_zip PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(velm_zip PUBLIC velm_files Qt5::Core Minizip PRIVATE velm_flags)

add_library(velm_objects OBJECT
    include/CVelmEvent.h  # for moc
    archive/ChosenNames.cpp
    archive/CVelmCompress.cpp
    archive/Extraction.cpp
    archive/ReadLimits.cpp
    archive/SourceTree.cpp
    archive/StagedTree.cpp
    calc/CVelmCalculate.cpp
    common/files/CVelmFilePath.cpp
    common/files/CVelmFindFile.cpp
    common/files/FolderWalk.cpp
    common/files/SearchPaths.cpp
    common/host/CVelmEvent.cpp
    common/host/CVelmMessage.cpp
    common/host/CVelmRegTable.cpp
    common/host/HostCalls.cpp
    common/host/MessageHandler.cpp
    common/host/Module.cpp
    common/host/Process.cpp
    common/json/CVelmBaseObject.cpp
    common/json/CVelmObjectManager.cpp
    common/json/Json.cpp
    common/json/JsonBinding.cpp
    common/json/JsonMerge.cpp
    common/platform/FolderContent${VELM_SYSTEM}.cpp
    common/platform/FolderHandle${VELM_SYSTEM}.cpp
    common/platform/NewFile${VELM_SYSTEM}.cpp
    common/platform/Platform${VELM_SYSTEM}.cpp
    common/text/ChineseNumber.cpp
    common/text/CVelmString.cpp
    common/text/CVelmStringLists.cpp
    common/text/CVelmStringVariant.cpp
    common/text/Gb18030.cpp
    common/text/Pinyin.cpp
    config/CVelmConfigManager.cpp
    config/documents/ConfigJson.cpp
    config/documents/DocumentCheck.cpp
    config/documents/FieldConversion.cpp
    config/documents/GenusLayout.cpp
    config/parameters/CVelmSystemGlobal.cpp
    config/parameters/GlobalParamStore.cpp
    config/tables/ConfigRecord.cpp
    config/tables/ConfigRecords.cpp
    config/tables/CVelmAnnotate.cpp
    config/tables/CVelmAreaLine.cpp
    config/tables/CVelmAttribute.cpp
    config/tables/CVelmAttributeDB.cpp
    config/tables/CVelmAttributeDef.cpp
    config/tables/CVelmCmdSetting.cpp
    config/tables/CVelmCodeManager.cpp
    config/tables/CVelmFrame.cpp
    config/tables/CVelmIndex.cpp
    config/tables/CVelmIndexDB.cpp
    config/tables/CVelmIndexIni.cpp
    config/tables/CVelmRecordManager.cpp
    config/tables/CVelmWork.cpp
    config/tables/CVelmWorkDB.cpp
    config/tables/CVelmWorkDef.cpp
    config/tables/DefinitionFile.cpp
    crypto/CVelmCryptionFactory.cpp
    crypto/CVelmCyptionDES2.cpp
    crypto/Des.cpp
    crypto/DesFile.cpp
    data/access/ConfigDatabase.cpp
    data/access/ConfigSources.cpp
    data/access/SystemConfig.cpp
    data/access/TableReader.cpp
    data/sql/Connection.cpp
    data/sql/CVelmDatabase.cpp
    data/sql/CVelmDatabasePrivate.cpp
    data/sql/CVelmDatabaseSchema.cpp
    data/sql/RowReading.cpp
    data/sql/SqlText.cpp
    data/sql/Statement.cpp
    data/sql/WriteTransaction.cpp
    data/values/CVelmReadGlobaldefinesTable.cpp
    data/values/CVelmSaveUserData.cpp
    data/values/CVelmTBLManager.cpp
    data/values/GlobalDefine.cpp
    data/values/UserStore.cpp
    data/xml/CVelmXmlManager.cpp
    data/xml/XmlBounds.cpp
    data/xml/XmlDeclarations.cpp
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
set_source_files_properties(config/parameters/CVelmSystemGlobal.cpp PROPERTIES
    COMPILE_DEFINITIONS VELM_VERSION="${PROJECT_VERSION}")
target_include_directories(velm_objects PUBLIC ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR})
target_link_libraries(velm_objects
    PUBLIC velm_zip velm_files Qt5::Core Qt5::Gui Qt5::Widgets Qt5::Sql Qt5::Xml RapidJSON ${CMAKE_DL_LIBS}
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
