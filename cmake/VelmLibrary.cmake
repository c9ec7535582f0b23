# The library. Its objects are compiled once: the shared library exports the public classes, and the tests of private
# parts and the benchmarks link the objects themselves.

set(VELM_PLATFORM_SOURCE $<IF:$<PLATFORM_ID:Windows>,common/platform/PlatformWindows.cpp,common/platform/PlatformUnix.cpp>)

add_library(velm_objects OBJECT
    common/ChineseNumber.cpp
    common/CVelmFilePath.cpp
    common/CVelmFindFile.cpp
    common/CVelmString.cpp
    common/CVelmStringLists.cpp
    common/CVelmStringVariant.cpp
    common/Gb18030.cpp
    common/Pinyin.cpp
    ${VELM_PLATFORM_SOURCE}
    data/CVelmDatabase.cpp
    data/CVelmDatabaseSchema.cpp
    data/ConfigDatabase.cpp
    data/Connection.cpp
    data/SqlText.cpp
    data/Statement.cpp
    config/CVelmConfigManager.cpp
    config/CVelmIndex.cpp
    config/CVelmIndexDB.cpp
    config/CVelmIndexIni.cpp
    config/CVelmSystemGlobal.cpp
    config/CVelmWork.cpp
    config/CVelmWorkDB.cpp
    config/CVelmWorkDef.cpp
    config/DefinitionFile.cpp
    config/SystemConfig.cpp)
set_target_properties(velm_objects PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
target_compile_definitions(velm_objects PUBLIC VELMCOMMON_LIBRARY)
target_include_directories(velm_objects PUBLIC ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR})
target_link_libraries(velm_objects
    PUBLIC Qt5::Core Qt5::Gui Qt5::Widgets Qt5::Sql ${CMAKE_DL_LIBS}
    PRIVATE velm_flags)

add_library(VelmCommon SHARED)
add_library(Velm::Common ALIAS VelmCommon)
set_target_properties(VelmCommon PROPERTIES
    EXPORT_NAME Common
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})
if(WIN32)
    set_target_properties(VelmCommon PROPERTIES PREFIX "" IMPORT_PREFIX "lib")
endif()
target_include_directories(VelmCommon PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/VelmCommon>)
target_compile_features(VelmCommon PUBLIC cxx_std_17)
target_link_libraries(VelmCommon
    PUBLIC Qt5::Core Qt5::Gui Qt5::Widgets Qt5::Sql
    PRIVATE $<BUILD_INTERFACE:velm_objects> $<BUILD_INTERFACE:velm_flags>)
