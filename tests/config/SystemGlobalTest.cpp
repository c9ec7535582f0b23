#include "CVelmSystemGlobal.h"
#include "VelmGlobalParam.h"

#include "support/TemporaryRoot.h"

#include <QCoreApplication>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

CVelmSystemGlobal& system()
{
    return *CVelmSystemGlobal::Instance();
}

QString sqliteDriver()
{
    QString file;
    for (const QString& folder : QCoreApplication::libraryPaths()) {
        const QDir drivers(folder + u"/sqldrivers"_s);
        for (const QString& name : drivers.entryList({u"*qsqlite.*"_s}, QDir::Files))
            file = drivers.filePath(name);
    }
    return file;
}

#ifdef Q_OS_WIN
HINSTANCE load(const QString& file)
{
    return LoadLibraryW(reinterpret_cast<LPCWSTR>(file.utf16()));
}
void unload(HINSTANCE module)
{
    FreeLibrary(module);
}
void setVariable(const QString& name, const QString& value)
{
    SetEnvironmentVariableW(reinterpret_cast<LPCWSTR>(name.utf16()),
                            reinterpret_cast<LPCWSTR>(value.utf16()));
}
#else
HINSTANCE load(const QString& file)
{
    return static_cast<HINSTANCE>(dlopen(QFile::encodeName(file).constData(), RTLD_NOW));
}
void unload(HINSTANCE module)
{
    dlclose(module);
}
void setVariable(const QString& name, const QString& value)
{
    qputenv(name.toLatin1().constData(), QFile::encodeName(value));
}
#endif

}  // namespace

using SystemGlobalTest = TemporaryRoot;

TEST_F(SystemGlobalTest, FollowsTheRootThatTheEnvironmentNames)
{
    EXPECT_EQ(system().getSystemRootRoute(), root());
    EXPECT_EQ(system().getSystemConfigDb(), path(u"config/peltaconfig.db"_s));
    EXPECT_EQ(system().getPipeConfigDb(), path(u"config/PipeConfig.db"_s));
    EXPECT_EQ(system().getProfileName(), u"测绘 root"_s);
    EXPECT_EQ(system().getVersion(), Velm::VersionDatabase);
    EXPECT_FALSE(system().isCadSystem());

    // Of characters that no one code page holds, and set by whom no C run-time tells.
    const QString other = path(u"Ω𠮷☃"_s);
    ASSERT_TRUE(QDir().mkpath(other));
    setVariable(u"VELM_ROOT"_s, other);
    EXPECT_EQ(system().getSystemRootRoute(), other);

    EXPECT_TRUE(system().setSystemRootRoute(root()));
    EXPECT_FALSE(system().setSystemRootRoute(path(u"missing"_s)));
    EXPECT_EQ(system().getSystemRootRoute(), root()) << "comes before the environment";
    EXPECT_TRUE(system().setSystemRootRoute(QString()));
    EXPECT_EQ(system().getSystemRootRoute(), other);

    setVariable(u"VELM_ROOT"_s, u"no such folder"_s);
    const QString ownFolder = system().getSystemRootRoute();
    EXPECT_FALSE(QDir(ownFolder).entryList({u"*VelmCommon*"_s}, QDir::Files).isEmpty())
        << "without a valid VELM_ROOT the root is the library's folder, not "
        << ownFolder.toStdString();
}

TEST_F(SystemGlobalTest, PutsTheHostsPathsBeforeItsOwnAndKeepsEachOnce)
{
    const QStringList own{path(u"config"_s), root()};
    EXPECT_EQ(system().getSearchPaths().mid(system().getSearchPaths().size() - 2), own);
    ASSERT_TRUE(QDir().mkpath(path(u"一"_s)));
    ASSERT_TRUE(QDir().mkpath(path(u"two"_s)));
    EXPECT_TRUE(system().addSearchPath(path(u"一"_s)));
    EXPECT_TRUE(system().addSearchPath(path(u"two"_s)));
    EXPECT_TRUE(system().addSearchPath(path(u"two/../一/"_s)));
    EXPECT_FALSE(system().addSearchPath(path(u"missing"_s)));
    EXPECT_FALSE(system().addSearchPath(QString()));
    const QStringList paths = system().getSearchPaths();
    EXPECT_EQ(paths.mid(paths.size() - 4), QStringList({path(u"一"_s), path(u"two"_s)}) + own);
}

TEST_F(SystemGlobalTest, FindsDataFormatsByTheirExactNames)
{
    g_VelmGlobalParam.m_dataFormatArray = {{0, u"Point"_s, u","_s}, {1, u"点"_s, u" "_s}};
    VelmDataFormat format;
    EXPECT_TRUE(system().getDataFormat(u"点"_s, format));
    EXPECT_EQ(format.m_splitSymbol, u" "_s);
    EXPECT_FALSE(system().getDataFormat(u"point"_s, format));
    EXPECT_EQ(format.m_tableDirection, 1);
    g_VelmGlobalParam = VelmGlobalParam();
}

TEST_F(SystemGlobalTest, FindsTheFoldersOfLoadedModules)
{
    // Any library will do, loaded from a folder that goes with the test: a search path stays for
    // the whole process.
    const QString module = path(u"模块/bin/probe.dll"_s);
    writeFile(u"模块/bin/readme"_s, "");
    ASSERT_TRUE(QFile::copy(sqliteDriver(), module));
    EXPECT_FALSE(system().addSearchPathByDllName(u"probe.dll"_s, 0)) << "not loaded yet";
    const HINSTANCE handle = load(module);
    ASSERT_NE(handle, nullptr);
    EXPECT_TRUE(system().addSearchPathByDllName(u"probe.dll"_s, 0));
    EXPECT_TRUE(system().addSearchPathByDllName(module, 0));
    EXPECT_TRUE(system().addSearchPathByHandle(handle, 1));
    EXPECT_FALSE(system().addSearchPathByHandle(handle, 1000)) << "no folder has that many parents";
    EXPECT_FALSE(system().addSearchPathByHandle(nullptr, 1000));
    EXPECT_FALSE(system().addSearchPathByDllName(QString(), 0));
    unload(handle);
    EXPECT_EQ(system().getSearchPaths().filter(root()),
              QStringList({path(u"模块/bin"_s), path(u"模块"_s), path(u"config"_s), root()}));
}
