#include "CVelmDatabase.h"

#include "support/Printers.h"
#include "support/Records.h"
#include "support/SqlRecorder.h"
#include "support/Wait.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

/// Both drivers recorded, and an object to open.
class DatabaseConnection : public testing::Test
{
protected:
    SqlRecorder sqlite{"QSQLITE"}, access{"QODBC"};
    CVelmDatabase database;
};

const QString kAccess = u"DRIVER={Microsoft Access Driver (*.mdb, *.accdb)};FIL={MS Access};DBQ="_s;
const QString kBegin = u"begin"_s, kClose = u"close"_s, kCommit = u"commit"_s, kRollback = u"rollback"_s;

/// How many connections Qt knows.
int registered()
{
    return QSqlDatabase::connectionNames().size();
}

}  // namespace

TEST_F(DatabaseConnection, GoesToAccessForTheEndingMdbOnly)
{
    const int before = registered();
    EXPECT_EQ(database.initDatabase(u"D:/图/a.MDB"_s, u"UID=%1"_s), Velm::VelmOk);
    EXPECT_TRUE(database.isOpen());
    const QString name = database.getQSqlDatabase().connectionName();
    EXPECT_EQ(database.initDatabase(u"%1.mdb"_s, QString()), Velm::VelmOk);
    EXPECT_NE(database.getQSqlDatabase().connectionName(), name);
    EXPECT_EQ(access.takeEvents(), (QStringList{u"open "_s + kAccess + u"D:/图/a.MDB;UID=%1"_s, kClose,
                                                u"open "_s + kAccess + u"%1.mdb"_s}));
    for (const QString& file : {u"a.accdb"_s, u"a.mdb.db"_s, u"mdb"_s}) {
        EXPECT_EQ(database.initDatabase(file, u"UID=1"_s), Velm::VelmOk);
        EXPECT_EQ(sqlite.takeEvents().last(), u"open "_s + file);
        EXPECT_EQ(registered(), before + 1);
    }
    EXPECT_EQ(database.initDatabase(QString(), QString()), Velm::VelmInvalidValue);
    EXPECT_EQ(sqlite.takeEvents(), QStringList{kClose});
    EXPECT_FALSE(database.isOpen());
    EXPECT_EQ(registered(), before);
}

TEST_F(DatabaseConnection, ThatCannotBeOpenedStaysRegisteredUnderItsName)
{
    sqlite.refusedEvents = u"open"_s;
    const int before = registered();
    EXPECT_EQ(database.initDatabase(u"a.db"_s, QString()), Velm::VelmDatabaseOpenFailed);
    EXPECT_FALSE(database.isOpen());
    EXPECT_EQ(database.closeDatabase(false, 0), Velm::VelmOk);
    EXPECT_EQ(registered(), before + 1);
    EXPECT_EQ(sqlite.takeEvents(), QStringList{u"open a.db"_s});
}

TEST_F(DatabaseConnection, IsSharedByCopiesAndClosedByTheLast)
{
    static QStringList warnings;
    const QtMessageHandler previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { warnings.append(text); });
    const int before = registered();
    std::optional<CVelmDatabase> first(std::in_place);
    EXPECT_EQ(first->initDatabase(u"a.db"_s, QString()), Velm::VelmOk);
    EXPECT_EQ(database.initDatabase(u"b.db"_s, QString()), Velm::VelmOk);
    database = *first;
    EXPECT_EQ(first->startTransaction(true), Velm::VelmOk);
    first.reset();
    EXPECT_EQ(sqlite.takeEvents(), (QStringList{u"open a.db"_s, u"open b.db"_s, kClose, kBegin}));
    EXPECT_TRUE(database.isOpen());
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk);
    EXPECT_EQ(registered(), before + 1);
    database = CVelmDatabase();
    EXPECT_EQ(sqlite.takeEvents(), (QStringList{kCommit, kClose}));
    EXPECT_EQ(registered(), before);
    qInstallMessageHandler(previous);
    EXPECT_EQ(warnings, QStringList()) << "a handle or query outlived the connection";
}

TEST_F(DatabaseConnection, HasOneTransactionAtATime)
{
    ASSERT_EQ(database.initDatabase(u"a.db"_s, QString()), Velm::VelmOk);
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk);
    EXPECT_EQ(database.startTransaction(false), Velm::VelmOk);
    EXPECT_EQ(sqlite.takeEvents(), QStringList{u"open a.db"_s});

    EXPECT_EQ(database.startTransaction(true), Velm::VelmOk);
    EXPECT_EQ(database.startTransaction(true), Velm::VelmOk);
    EXPECT_EQ(database.startTransaction(false), Velm::VelmOk);
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk);
    EXPECT_EQ(sqlite.takeEvents(), (QStringList{kBegin, kCommit}));

    sqlite.refusedEvents = u"begin"_s;
    EXPECT_EQ(database.startTransaction(true), Velm::VelmTransactionFailed);
    EXPECT_EQ(database.startTransaction(true), Velm::VelmOk) << "a failed start counts as started";
    sqlite.refusedEvents = u"commit"_s;
    EXPECT_EQ(database.endTransaction(), Velm::VelmCommitFailed);
    EXPECT_EQ(sqlite.takeEvents(), (QStringList{kBegin, kCommit, kRollback}));
    EXPECT_EQ(database.startTransaction(true), Velm::VelmOk);
    sqlite.refusedEvents = u"commit rollback"_s;
    EXPECT_EQ(database.endTransaction(), Velm::VelmRollbackFailed);
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk) << "a failed end is an end";
}

TEST_F(DatabaseConnection, ClosesLaterToAccessOnly)
{
    ASSERT_EQ(database.initDatabase(u"a.mdb"_s, QString()), Velm::VelmOk);
    EXPECT_EQ(database.closeDatabase(true, 1), Velm::VelmOk);
    EXPECT_TRUE(database.isOpen());
    letPass(20);
    EXPECT_FALSE(database.isOpen());

    ASSERT_EQ(database.initDatabase(u"a.mdb"_s, QString()), Velm::VelmOk);
    EXPECT_EQ(database.closeDatabase(true, 1), Velm::VelmOk);
    ASSERT_EQ(database.initDatabase(u"b.mdb"_s, QString()), Velm::VelmOk);
    letPass(20);
    EXPECT_TRUE(database.isOpen()) << "the close was meant for the connection before";

    EXPECT_EQ(database.closeDatabase(true, 1), Velm::VelmOk);
    access.takeEvents();
    database = CVelmDatabase();
    EXPECT_EQ(access.takeEvents(), QStringList{kClose});
    letPass(20);
    EXPECT_EQ(access.takeEvents(), QStringList());

    ASSERT_EQ(database.initDatabase(u"a.db"_s, QString()), Velm::VelmOk);
    EXPECT_EQ(database.closeDatabase(true, 600000), Velm::VelmOk);
    EXPECT_FALSE(database.isOpen());
}
