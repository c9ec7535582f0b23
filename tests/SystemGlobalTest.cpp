#include "CVelmSystemGlobal.h"

#include "support/Printers.h"
#include "support/TemporaryRoot.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

namespace {

CVelmSystemGlobal& system()
{
    return *CVelmSystemGlobal::Instance();
}

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
        << "without a valid VELM_ROOT the root is the library's folder, not " << ownFolder.toStdString();
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
    // Qt's core library is loaded by every test; the program itself is the null handle.
#ifdef Q_OS_WIN
    const QString core = QStringLiteral("Qt5Core.dll");
#else
    const QString core = QStringLiteral("libQt5Core.so.5");
#endif
    EXPECT_TRUE(system().addSearchPathByDllName(core, 0));
    EXPECT_FALSE(system().addSearchPathByDllName(QStringLiteral("not loaded.dll"), 0));
    EXPECT_FALSE(system().addSearchPathByDllName(QString(), 0));
    EXPECT_FALSE(system().addSearchPathByHandle(nullptr, 1000)) << "no folder has that many parents";

    EXPECT_TRUE(system().addSearchPathByHandle(nullptr, 0));
    EXPECT_TRUE(system().addSearchPathByHandle(nullptr, 1));
    const QString programFolder = QFileInfo(QCoreApplication::applicationFilePath()).canonicalPath();
    const QStringList paths = system().getSearchPaths();
    EXPECT_TRUE(paths.contains(programFolder)) << programFolder.toStdString();
    EXPECT_TRUE(paths.contains(QFileInfo(programFolder).path()));
}
