#include "CVelmDatabase.h"

#include "support/Values.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSqlError>
#include <QTemporaryDir>

#include <clocale>

namespace {

/// Registers the driver in @p folder and makes UTF-8 the locale. Under Wine both must be so before
/// the start: scripts/wine-root has registered the driver, scripts/run-windows sets the locale.
void prepareManager([[maybe_unused]] const QString& folder)
{
#ifndef Q_OS_WIN
    QFile drivers(folder + u"/odbcinst.ini"_s);
    ASSERT_TRUE(drivers.open(QIODevice::WriteOnly));
    drivers.write("[Microsoft Access Driver (*.mdb, *.accdb)]\nDriver=libsqlite3odbc.so\n");
    qputenv("ODBCSYSINI", QFile::encodeName(folder));
    ASSERT_NE(setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
#endif
}

/// Access files through the system's driver manager, where a driver for SQLite bears the name of
/// the one for Access. The manager learns once in a process where its configuration lies, converts
/// texts by the C locale, and spoils the names of result columns that are not ASCII. Wine's passes
/// everything on to that of the Linux it runs on, and so reaches a driver of Linux.
class DatabaseOdbc : public testing::Test
{
protected:
    /// Under Wine on drive Z:, which is the driver's root.
    static QString folder()
    {
        static const QTemporaryDir folder(u"/tmp/velm_tests-XXXXXX"_s);
        return folder.path();
    }

    void SetUp() override
    {
        ASSERT_TRUE(QSqlDatabase::isDriverAvailable(u"QODBC"_s)) << "install libqt5sql5-odbc";
        ASSERT_NO_FATAL_FAILURE(prepareManager(folder()));
        QFile::remove(file);
        const QString seenByDriver = file.mid(file.indexOf(u'/'));
        ASSERT_EQ(database.initDatabase(file, u"Database="_s + seenByDriver), Velm::VelmOk)
            << database.getQSqlDatabase().lastError().text().toStdString()
            << "\nIs libsqliteodbc installed?";
    }

    void TearDown() override { setlocale(LC_CTYPE, m_locale.constData()); }

    const QString file = folder() + u"/x.MDB"_s;
    CVelmDatabase database;

private:
    const QByteArray m_locale = setlocale(LC_CTYPE, nullptr);
};

}  // namespace

TEST_F(DatabaseOdbc, CreatesWritesAndReads)
{
    const QString table = u"管线"_s, code = u"编号"_s, depth = u"Depth"_s;
    QList<VelmFieldItem> fields{VelmFieldItem(), VelmFieldItem()};
    fields[0].m_fieldName = code;
    fields[0].m_fieldMust = true;
    fields[1].m_fieldName = depth;
    fields[1].m_fieldType = Velm::FieldReal;
    for (const bool exists : {false, true}) {
        EXPECT_EQ(database.existTable(table), exists);
        ASSERT_EQ(database.createTable(table, fields), Velm::VelmOk);
        EXPECT_EQ(database.writeTable(table, {{{code, u"雨1"_s}, {depth, 2.5}}}), Velm::VelmOk);
    }
    EXPECT_EQ(database.tableName(), QStringList{table});
    EXPECT_EQ(database.columnType(table, u"depth"_s), QVariant::Double);
    EXPECT_EQ(database.updataRecord(table, {{depth, 3.5}}, {{code, u"雨2"_s}}), Velm::VelmOk);
    EXPECT_EQ(database.updataRecord(table, {{depth, -1}}, {{code, u"雨1"_s}}), Velm::VelmOk);
    EXPECT_EQ(database.readFields(table, code, {{depth, 3.5}}), QList<QVariant>{u"雨2"_s});
    Rows rows;
    EXPECT_EQ(database.executeSql(u"select Depth from 管线"_s, rows), Velm::VelmOk);
    EXPECT_EQ(rows, (Rows{{{u"DEPTH"_s, -1.0}}, {{u"DEPTH"_s, 3.5}}}));
    EXPECT_EQ(database.writeRecord(u"无"_s, {{depth, 1}}), Velm::VelmTableNotExist);
    EXPECT_EQ(database.writeRecord(table, {{depth, 1}}), Velm::VelmSqlExecFailed);
    EXPECT_TRUE(database.getLastErrorText().contains(u"NOT NULL"_s));
}

TEST_F(DatabaseOdbc, BindsBytesToColumnsOfAnyName)
{
    const QVariant bytes = QByteArray::fromHex("00ff27003a3f0a"), text = u"?:a'"_s;
    const Record key{{u"a_1"_s, 7}};
    ASSERT_EQ(database.executeSql(u"create table B (图像 blob, a_1 int, 图 text)"_s), Velm::VelmOk);
    EXPECT_EQ(
        database.writeRecordBlob(u"B"_s, {{u"图像"_s, bytes}, {u"a_1"_s, 7}, {u"图"_s, text}}),
        Velm::VelmOk);
    EXPECT_EQ(database.readRecord(u"B"_s, u"图像"_s, key, true), bytes);
    EXPECT_EQ(database.readRecord(u"B"_s, u"图"_s, key, true), text);
}

TEST_F(DatabaseOdbc, KeepsValuesOfACommittedTransaction)
{
    const QString text = u"图"_s.repeated(5000);
    const Record row{
        {u"N"_s, -2147483647}, {u"R"_s, 0.1}, {u"T"_s, text}, {u"V"_s, QVariant(QVariant::Int)}};
    ASSERT_EQ(database.executeSql(u"create table T (N int, R double, T text, V int)"_s),
              Velm::VelmOk);
    for (const bool keeps : {false, true}) {
        EXPECT_EQ(database.startTransaction(true), Velm::VelmOk);
        EXPECT_EQ(database.writeRecord(u"T"_s, row), Velm::VelmOk);
        EXPECT_TRUE(keeps || database.getQSqlDatabase().rollback());
        EXPECT_EQ(database.endTransaction(), Velm::VelmOk);
        EXPECT_EQ(database.recordCount(u"T"_s, {}), keeps ? 1U : 0U);
    }
    const Rows rows = database.readTable(u"T"_s);
    ASSERT_EQ(rows, Rows{row});
    EXPECT_TRUE(rows[0][u"V"_s].isNull());
}
