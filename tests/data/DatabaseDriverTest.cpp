#include "CVelmDatabase.h"

#include "support/Values.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QEventLoop>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlRecord>
#include <QSqlResult>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace {

/// What the drivers were asked for since the last look, one a line: the texts of statements
/// executed or prepared, "open NAME" and "close".
QStringList requests;

/// What begins so fails, a statement with the text "refused".
QStringList refused;

bool ask(const QString& request)
{
    requests.append(request);
    return std::none_of(refused.cbegin(), refused.cend(),
                        [&](const QString& start) { return request.startsWith(start); });
}

QString taken()
{
    return std::exchange(requests, {}).join(u'\n');
}

/// Every statement has one row that holds 1 in one column "N".
class RecordingResult : public QSqlResult
{
public:
    explicit RecordingResult(const QSqlDriver* driver) : QSqlResult(driver) {}

protected:
    bool savePrepare(const QString& statement) override { return reset(statement); }
    bool exec() override { return true; }
    bool reset(const QString& statement) override
    {
        const bool accepted = ask(statement);
        setSelect(true);
        setActive(accepted);
        setLastError(accepted ? QSqlError() : QSqlError(u"refused"_s));
        return accepted;
    }
    QVariant data(int) override { return 1; }
    bool isNull(int) override { return false; }
    bool fetch(int row) override
    {
        setAt(row == 0 ? 0 : static_cast<int>(QSql::AfterLastRow));
        return row == 0;
    }
    bool fetchFirst() override { return fetch(0); }
    bool fetchLast() override { return fetch(0); }
    int size() override { return -1; }
    int numRowsAffected() override { return 1; }
    QSqlRecord record() const override
    {
        QSqlRecord columns;
        columns.append(QSqlField(u"N"_s, QVariant::Int));
        return columns;
    }
};

class RecordingDriver : public QSqlDriver
{
public:
    bool hasFeature(DriverFeature) const override { return false; }
    QSqlResult* createResult() const override { return new RecordingResult(this); }
    bool open(const QString& name, const QString&, const QString&, const QString&, int,
              const QString&) override
    {
        setOpen(ask(u"open "_s + name));
        return isOpen();
    }
    void close() override
    {
        if (isOpen())  // Qt closes again when the last handle goes
            ask(u"close"_s);
        setOpen(false);
    }
};

/// Databases of which only the requests to their drivers are real: a recording driver takes the
/// place of those for SQLite and ODBC.
class DatabaseDriver : public testing::Test
{
protected:
    DatabaseDriver()
    {
        for (const QString& name : {u"QSQLITE"_s, u"QODBC"_s})
            QSqlDatabase::registerSqlDriver(name, new QSqlDriverCreator<RecordingDriver>);
    }
    ~DatabaseDriver() override
    {
        database = CVelmDatabase();
        for (const QString& name : {u"QSQLITE"_s, u"QODBC"_s})
            QSqlDatabase::registerSqlDriver(name, nullptr);
        requests.clear();
        refused.clear();
    }

    void open(const QString& file, const QString& options = QString())
    {
        ASSERT_EQ(database.initDatabase(file, options), Velm::VelmOk);
    }

    /// How many more connections Qt knows than before the test.
    int registered() const { return QSqlDatabase::connectionNames().size() - m_before; }

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

using Db = CVelmDatabase;

const QString T = u"T"_s, F = u"列"_s;
const Record kAll, kKey{{u"K"_s, 7}}, kTwo{{u"B"_s, u"x"_s}, {u"A"_s, 1}};
const QList<QPair<QString, Velm::DataBaseOrderByType>> kSorted{{u"A"_s, Velm::OrderDescending},
                                                               {u"B"_s, Velm::OrderAscending}};

void createTable(Db& db)
{
    QList<VelmFieldItem> fields;
    for (const int type : {0, 1, 2, 3, 4, -1}) {
        fields.append(VelmFieldItem());
        fields.last().m_fieldName = u"列%1"_s.arg(type);
        fields.last().m_fieldType = static_cast<Velm::FieldType>(type);
        fields.last().m_fieldMust = type == 0 || type == 2;
    }
    db.createTable(T, fields);
}

const QString kBegin = u"pragma busy_timeout\npragma busy_timeout=0\nbegin immediate\n"
                       "pragma busy_timeout=1\n"_s;

const struct
{
    void (*call)(Db& db);
    const char* statements;  // with names in braces where the systems differ
} kStatements[] = {
    {createTable,
     "{exists}\nDROP TABLE T\nCreate Table T([列0] TEXT NOT NULL, [列1] INT, [列2] LONG NOT NULL, "
     "[列3] {real}, [列4] TEXT, [列-1] TEXT);"},
    {[](Db& db) { db.clearTable(u"A;表"_s); }, "DELETE FROM A\nDELETE FROM 表"},
    {[](Db& db) { db.writeRecord(T, kTwo); }, "{exists}\ninsert into T ([A], [B]) values(1, 'x')"},
    {[](Db& db) { db.writeRecordBlob(T, kTwo); }, "insert into T ([A],[B]) values (:A,:B)"},
    {[](Db& db) { db.updataRecord(T, kKey, kTwo); },
     "{begin}select count(*) from T where [A]=1 and [B]='x'\n"
     "update T set [K]=7 where [A]=1 and [B]='x'{commit}"},
    {[](Db& db) { db.deleteRecord(T, kTwo); }, "{exists}\ndelete from [T] where [A]=1 and [B]='x'"},
    {[](Db& db) { db.deleteRecord(T, kAll); }, "{exists}\ndelete from [T] "},
    {[](Db& db) { db.readRecord(T, kTwo, false); },
     "select * from [T] where [A]=1 and [B]='x' COLLATE NOCASE "},
    {[](Db& db) { db.readRecord(T, F, kKey, true); }, "select [列] from [T] where [K]=7"},
    {[](Db& db) { db.readRecord(T, F, kAll, false); }, "select [列] from [T]  COLLATE NOCASE "},
    {[](Db& db) { db.readRecords(T, F, kAll, false, true); }, "select [列] from T"},
    {[](Db& db) { db.readRecords(T, F, kKey, true, false); },
     "select distinct [列] from T where [K]=7 COLLATE NOCASE "},
    {[](Db& db) {
         db.readFields(T, F, {{u"A"_s, ~Q_UINT64_C(0)}, {u"B"_s, 0.1F}});
     },
     "select [列] from T where [A]= and [B]=0.1"},
    {[](Db& db) { db.readRecords(T, kKey, kSorted, false); },
     "select * from [T] where [K]=7 COLLATE NOCASE  order by A desc,B asc"},
    {[](Db& db) { db.recordCount(T, kAll); }, "select count(*) from T "},
    {[](Db& db) { db.columnCount(T); }, "select * from [T]"},
    {[](Db& db) { db.addColumnField(T, F, QVariant::LongLong, 20); },
     "alter table T add column [列] LONG"},
    {[](Db& db) { db.changeColumnType(T, F, QVariant::Int); },
     "alter table T alter column [T] INT"},
    {[](Db& db) { db.renameColumnName(T, u"N"_s, F); },
     "select * from [T]\nselect * from [T]\nalter table T add column [列] INT\n"
     "update T set 列=N\nalter table T drop COLUMN 'N'"},
};

}  // namespace

TEST_F(DatabaseDriver, GetsTheSameStatementsOnBothSystemsButForTablesAndReals)
{
    const QString exists =
        u"select count(*) from sqlite_master where type = 'table' and name = 'T'"_s;
    for (const bool access : {false, true}) {
        open(access ? u"库.mdb"_s : u"库.db"_s);
        taken();
        for (const auto& c : kStatements) {
            QString expected = QString::fromUtf8(c.statements);
            expected.replace(u"{exists}"_s, access ? u"select * from T"_s : exists);
            expected.replace(u"{real}"_s, access ? u"NUMERIC"_s : u"REAL"_s);
            expected.replace(u"{begin}"_s, access ? QString() : kBegin);
            expected.replace(u"{commit}"_s, access ? QString() : u"\ncommit"_s);
            c.call(database);
            EXPECT_EQ(taken(), expected);
        }
    }
}

TEST_F(DatabaseDriver, GetsValuesByTheirTypes)
{
    const QDateTime noon(QDate(2024, 2, 29), QTime(12, 0));
    for (const bool access : {false, true}) {
        open(access ? u"库.mdb"_s : u"库.db"_s);
        QString sql;
        database.getInsertSql(sql, T,
                              {{u"A"_s, noon},
                               {u"B"_s, noon.addMSecs(1250)},
                               {u"C"_s, noon.date()},
                               {u"D"_s, noon.time()},
                               {u"E"_s, 0.1F},
                               {u"F"_s, ~Q_UINT64_C(0)}});
        EXPECT_EQ(sql.section(u" values"_s, 1),
                  access ? u"(#2024-02-29 12:00:00#, #2024-02-29 12:00:01#, #2024-02-29#, "
                           "#12:00:00#, 0.1, 18446744073709551615)"_s
                         : u"('2024-02-29T12:00:00', '2024-02-29T12:00:01.250', '2024-02-29', "
                           "'12:00:00', 0.1, 18446744073709551615)"_s);
    }
}

TEST_F(DatabaseDriver, GetsNoStatementBehindOneThatFailed)
{
    open(u"库.mdb"_s);
    refused = QStringList{u"DROP"_s};
    EXPECT_EQ(database.createTable(T, {}), Velm::VelmSqlExecFailed);
    EXPECT_EQ(database.getLastErrorText(), u"refused"_s);
    refused.append(u"select"_s);  // no table
    EXPECT_EQ(database.writeRecord(T, kTwo), Velm::VelmTableNotExist);
    EXPECT_EQ(database.deleteRecord(T, kTwo), Velm::VelmOk);
    refused = QStringList{u"update"_s};
    EXPECT_EQ(database.renameColumnName(T, u"N"_s, F), Velm::VelmSqlExecFailed);
    EXPECT_EQ(
        taken().section(u'\n', 1),
        u"select * from T\nDROP TABLE T\nselect * from T\nselect * from T\nselect * from [T]\n"
        "select * from [T]\nalter table T add column [列] INT\nupdate T set 列=N"_s);
}

TEST_F(DatabaseDriver, IsTheOneForAccessForTheEndingMdbOnly)
{
    const QString access =
        u"open DRIVER={Microsoft Access Driver (*.mdb, *.accdb)};FIL={MS Access};DBQ="_s;
    open(u"D:/图/a.MDB"_s, u"UID=%1"_s);
    const QString name = database.getQSqlDatabase().connectionName();
    open(u"%1.mdb"_s);
    EXPECT_EQ(database.getQSqlDatabase().driverName(), u"QODBC"_s);
    EXPECT_NE(database.getQSqlDatabase().connectionName(), name);
    EXPECT_EQ(taken(), access + u"D:/图/a.MDB;UID=%1\nclose\n"_s + access + u"%1.mdb"_s);
    open(u"a.accdb"_s, u"UID=1"_s);
    EXPECT_EQ(database.getQSqlDatabase().driverName(), u"QSQLITE"_s);
    EXPECT_EQ(registered(), 1);
    EXPECT_EQ(database.initDatabase(QString(), QString()), Velm::VelmInvalidValue);
    EXPECT_EQ(taken(), u"close\nopen a.accdb\nclose"_s);
    EXPECT_EQ(registered(), 0);

    refused = QStringList{u"open"_s};
    EXPECT_EQ(database.initDatabase(u"a.db"_s, QString()), Velm::VelmDatabaseOpenFailed);
    EXPECT_EQ(database.closeDatabase(false, 0), Velm::VelmOk);
    EXPECT_EQ(registered(), 1) << "what was never open is not deregistered";
}

TEST_F(DatabaseDriver, ForAccessClosesLaterOnRequest)
{
    open(u"a.mdb"_s);
    EXPECT_EQ(database.closeDatabase(true, 1), Velm::VelmOk);
    EXPECT_TRUE(database.isOpen());
    letTimersPass();
    EXPECT_FALSE(database.isOpen());

    open(u"a.mdb"_s);
    database.closeDatabase(true, 1);
    open(u"b.mdb"_s);
    letTimersPass();
    EXPECT_TRUE(database.isOpen()) << "the close was meant for the connection before";

    taken();
    database.closeDatabase(true, 1);
    database = CVelmDatabase();
    letTimersPass();
    EXPECT_EQ(taken(), u"close"_s);

    open(u"a.mdb"_s);
    database.closeDatabase(true, -1);
    letTimersPass();
    EXPECT_FALSE(database.isOpen());

    open(u"a.db"_s);
    database.closeDatabase(true, 600000);
    EXPECT_FALSE(database.isOpen()) << "SQLite is closed at once";
}
