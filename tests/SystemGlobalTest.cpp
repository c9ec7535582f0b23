#include "CVelmSystemGlobal.h"

#include "support/Printers.h"
#include "support/TemporaryRoot.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

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
        const QDir drivers(folder + QStringLiteral("/sqldrivers"));
        for (const QString& name : drivers.entryList({QStringLiteral("*qsqlite.*")}, QDir::Files))
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
#else
HINSTANCE load(const QString& file)
{
    return static_cast<HINSTANCE>(dlopen(QFile::encodeName(file).constData(), RTLD_NOW));
}
void unload(HINSTANCE module)
{
    dlclose(module);
}
#endif

}  // namespace

using SystemGlobalTest = TemporaryRoot;

TEST_F(SystemGlobalTest, FollowsTheRootThatTheEnvironmentNames)
{
    EXPECT_EQ(system().getSystemRootRoute(), root());
    EXPECT_EQ(system().getSystemConfigDb(), path(QStringLiteral("config/peltaconfig.db")));
    EXPECT_EQ(system().getPipeConfigDb(), path(QStringLiteral("config/PipeConfig.db")));
    EXPECT_EQ(system().getProfileName(), QStringLiteral("测绘 root"));
    EXPECT_EQ(system().getVersion(), Velm::VersionDatabase);
    EXPECT_FALSE(system().isCadSystem());

    qputenv("VELM_ROOT", "no such folder");
    const QString ownFolder = system().getSystemRootRoute();
    EXPECT_FALSE(QDir(ownFolder).entryList({QStringLiteral("*VelmCommon*")}, QDir::Files).isEmpty())
        << "without a valid VELM_ROOT the root is the library's folder, not "
        << ownFolder.toStdString();
}

TEST_F(SystemGlobalTest, PutsTheHostsPathsBeforeItsOwnAndKeepsEachOnce)
{
    const QStringList own{path(QStringLiteral("config")), root()};
    EXPECT_EQ(system().getSearchPaths().mid(system().getSearchPaths().size() - 2), own);
    ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("一"))));
    ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("two"))));
    EXPECT_TRUE(system().addSearchPath(path(QStringLiteral("一"))));
    EXPECT_TRUE(system().addSearchPath(path(QStringLiteral("two"))));
    EXPECT_TRUE(system().addSearchPath(path(QStringLiteral("two/../一/"))));
    EXPECT_FALSE(system().addSearchPath(path(QStringLiteral("missing"))));
    EXPECT_FALSE(system().addSearchPath(QString()));
    const QStringList paths = system().getSearchPaths();
    EXPECT_EQ(paths.mid(paths.size() - 4),
              QStringList({path(QStringLiteral("一")), path(QStringLiteral("two"))}) + own);
}

TEST_F(SystemGlobalTest, FindsTheFoldersOfLoadedModules)
{
    // Any library will do, loaded from a folder that goes with the test: a search path stays for
    // the whole process.
    const QString module = path(QStringLiteral("模块/bin/probe.dll"));
    writeFile(QStringLiteral("模块/bin/readme"), "");
    ASSERT_TRUE(QFile::copy(sqliteDriver(), module));
    EXPECT_FALSE(system().addSearchPathByDllName(QStringLiteral("probe.dll"), 0))
        << "not loaded yet";
    const HINSTANCE handle = load(module);
    ASSERT_NE(handle, nullptr);
    EXPECT_TRUE(system().addSearchPathByDllName(QStringLiteral("probe.dll"), 0));
    EXPECT_TRUE(system().addSearchPathByDllName(module, 0));
    EXPECT_TRUE(system().addSearchPathByHandle(handle, 1));
    EXPECT_FALSE(system().addSearchPathByHandle(handle, 1000)) << "no folder has that many parents";
    EXPECT_FALSE(system().addSearchPathByHandle(nullptr, 1000));
    EXPECT_FALSE(system().addSearchPathByDllName(QString(), 0));
    unload(handle);
    EXPECT_EQ(system().getSearchPaths().filter(root()),
              QStringList({path(QStringLiteral("模块/bin")), path(QStringLiteral("模块")),
                           path(QStringLiteral("config")), root()}));
}
