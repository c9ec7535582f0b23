#include "CVelmDatabase.h"

#include "support/Printers.h"
#include "support/Records.h"
#include "support/SqlRecorder.h"

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTimer>

#include <optional>

namespace {

class DatabaseConnection : public testing::Test
{
protected:
    void open(const QString& file, const QString& options = QString())
    {
        ASSERT_EQ(database.initDatabase(file, options), Velm::VelmOk);
        ASSERT_TRUE(database.isOpen());
    }

    /// How many more connections Qt knows than before the test.
    int registered() const { return QSqlDatabase::connectionNames().size() - m_before; }

    SqlRecorder driver;
    CVelmDatabase database;

private:
    const int m_before = QSqlDatabase::connectionNames().size();
};

/// Runs the event loop until every timer of up to 10 ms is through.
void letTimersPass()
{
    QEventLoop loop;
    QTimer::singleShot(20, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

}  // namespace

TEST_F(DatabaseConnection, GoesToAccessForTheEndingMdbOnly)
{
    open(u"D:/图/a.MDB"_s, u"UID=%1"_s);
    const QString name = database.getQSqlDatabase().connectionName();
    open(u"%1.mdb"_s);
    EXPECT_NE(database.getQSqlDatabase().connectionName(), name);
    open(u"a.accdb"_s, u"UID=1"_s);
    open(u"a.mdb.db"_s);
    EXPECT_EQ(registered(), 1);
    EXPECT_EQ(database.initDatabase(QString(), QString()), Velm::VelmInvalidValue);
    EXPECT_FALSE(database.isOpen());
    EXPECT_EQ(registered(), 0);
    const QString access =
        u"QODBC open DRIVER={Microsoft Access Driver (*.mdb, *.accdb)};FIL={MS Access};DBQ="_s;
    EXPECT_EQ(driver.take(), access + u"D:/图/a.MDB;UID=%1\nclose\n"_s + access
                                 + u"%1.mdb\nclose\nQSQLITE open a.accdb\nclose\n"
                                   "QSQLITE open a.mdb.db\nclose"_s);
}

TEST_F(DatabaseConnection, ThatCannotBeOpenedStaysRegistered)
{
    driver.refused = QStringList{u"QSQLITE"_s};
    EXPECT_EQ(database.initDatabase(u"a.db"_s, QString()), Velm::VelmDatabaseOpenFailed);
    EXPECT_EQ(database.closeDatabase(false, 0), Velm::VelmOk);
    EXPECT_EQ(registered(), 1);
    EXPECT_EQ(driver.take(), u"QSQLITE open a.db"_s);
}

TEST_F(DatabaseConnection, IsSharedByCopiesAndClosedByTheLast)
{
    static QStringList warnings;
    const QtMessageHandler previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { warnings.append(text); });
    open(u"a.db"_s);
    std::optional<CVelmDatabase> copy(database);
    CVelmDatabase other;
    EXPECT_EQ(other.initDatabase(u"b.db"_s, QString()), Velm::VelmOk);
    other = database;
    EXPECT_EQ(copy->startTransaction(true), Velm::VelmOk);
    copy.reset();
    database = CVelmDatabase();
    EXPECT_EQ(driver.take(), u"QSQLITE open a.db\nQSQLITE open b.db\nclose\nbegin"_s);
    EXPECT_EQ(other.endTransaction(), Velm::VelmOk);
    EXPECT_EQ(registered(), 1);
    other = CVelmDatabase();
    EXPECT_EQ(driver.take(), u"commit\nclose"_s);
    EXPECT_EQ(registered(), 0);
    qInstallMessageHandler(previous);
    EXPECT_EQ(warnings, QStringList()) << "something outlived the connection";
}

TEST_F(DatabaseConnection, HasOneTransactionAtATime)
{
    open(u"a.db"_s);
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk);
    EXPECT_EQ(database.startTransaction(false), Velm::VelmOk);
    EXPECT_EQ(driver.take(), u"QSQLITE open a.db"_s);
    EXPECT_EQ(database.startTransaction(true), Velm::VelmOk);
    EXPECT_EQ(database.startTransaction(true), Velm::VelmOk);
    EXPECT_EQ(database.startTransaction(false), Velm::VelmOk);
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk);
    EXPECT_EQ(driver.take(), u"begin\ncommit"_s);

    driver.refused = QStringList{u"begin"_s, u"commit"_s};
    EXPECT_EQ(database.startTransaction(true), Velm::VelmTransactionFailed);
    EXPECT_EQ(database.startTransaction(true), Velm::VelmOk) << "a failed start is a start";
    EXPECT_EQ(database.endTransaction(), Velm::VelmCommitFailed);
    driver.refused = QStringList{u"commit"_s, u"rollback"_s};
    EXPECT_EQ(database.startTransaction(true), Velm::VelmOk);
    EXPECT_EQ(database.endTransaction(), Velm::VelmRollbackFailed);
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk) << "a failed end is an end";
    EXPECT_EQ(driver.take(), u"begin\ncommit\nrollback\nbegin\ncommit\nrollback"_s);
}

TEST_F(DatabaseConnection, ToAccessClosesLaterOnRequest)
{
    open(u"a.mdb"_s);
    EXPECT_EQ(database.closeDatabase(true, 1), Velm::VelmOk);
    EXPECT_TRUE(database.isOpen());
    letTimersPass();
    EXPECT_FALSE(database.isOpen());

    open(u"a.mdb"_s);
    EXPECT_EQ(database.closeDatabase(true, 1), Velm::VelmOk);
    open(u"b.mdb"_s);
    letTimersPass();
    EXPECT_TRUE(database.isOpen()) << "the close was meant for the connection before";

    driver.take();
    EXPECT_EQ(database.closeDatabase(true, 1), Velm::VelmOk);
    database = CVelmDatabase();
    letTimersPass();
    EXPECT_EQ(driver.take(), u"close"_s);

    open(u"a.db"_s);
    EXPECT_EQ(database.closeDatabase(true, 600000), Velm::VelmOk);
    EXPECT_FALSE(database.isOpen()) << "SQLite is closed at once";
}
