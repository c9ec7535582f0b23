#include "CVelmDatabase.h"

#include "support/Printers.h"
#include "support/Records.h"
#include "support/Wait.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSqlError>
#include <QTemporaryDir>

namespace {

/// Access files through the driver manager of the system, where a driver for SQLite bears the name of the one for
/// Access. Its configuration is a file of this process alone: the manager reads where it lies once.
class DatabaseOdbc : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        static const QTemporaryDir folder;
        s_folder = folder.path();
        QFile drivers(s_folder + u"/odbcinst.ini"_s);
        ASSERT_TRUE(drivers.open(QIODevice::WriteOnly));
        drivers.write("[Microsoft Access Driver (*.mdb, *.accdb)]\nDriver=libsqlite3odbc.so\n");
        qputenv("ODBCSYSINI", QFile::encodeName(s_folder));
    }

    void SetUp() override
    {
        ASSERT_TRUE(QSqlDatabase::isDriverAvailable(u"QODBC"_s)) << "install the package libqt5sql5-odbc";
        ASSERT_EQ(open(u"x"_s), Velm::VelmOk)
            << database.getQSqlDatabase().lastError().text().toStdString() << "\ninstall the package libsqliteodbc";
    }

    /// The file that is really opened has the ending ".MDB" too.
    Velm::ErrorStatus open(const QString& name)
    {
        const QString file = s_folder + u'/' + name + u".MDB"_s;
        QFile::remove(file);
        return database.initDatabase(file, u"Database="_s + file);
    }

    static QString s_folder;
    CVelmDatabase database;
};

QString DatabaseOdbc::s_folder;

}  // namespace

TEST_F(DatabaseOdbc, CreatesWritesAndReads)
{
    VelmFieldItem code, depth;
    code.m_fieldName = u"编号"_s;
    code.m_fieldMust = true;
    depth.m_fieldName = u"Depth"_s;
    depth.m_fieldType = Velm::FieldReal;
    for (int i = 0; i < 2; ++i) {  // the second creation drops the first table
        EXPECT_EQ(database.existTable(u"管线"_s), i == 1);
        ASSERT_EQ(database.createTable(u"管线"_s, {code, depth}), Velm::VelmOk);
        EXPECT_EQ(database.writeRecord(u"管线"_s, {{u"编号"_s, u"雨1"_s}, {u"Depth"_s, 2.125}}), Velm::VelmOk);
    }
    EXPECT_EQ(database.tableName(), QStringList{u"管线"_s});
    EXPECT_EQ(database.columnType(u"管线"_s, u"depth"_s), QVariant::Double);
    EXPECT_EQ(database.updataRecord(u"管线"_s, {{u"Depth"_s, 3.5}}, {{u"编号"_s, u"雨2"_s}}), Velm::VelmOk);
    EXPECT_EQ(database.updataRecord(u"管线"_s, {{u"Depth"_s, -1}}, {{u"编号"_s, u"雨1"_s}}), Velm::VelmOk);
    EXPECT_EQ(database.readTable(u"管线"_s), (Rows{{{u"编号"_s, u"雨1"_s}, {u"DEPTH"_s, -1.0}},
                                                   {{u"编号"_s, u"雨2"_s}, {u"DEPTH"_s, 3.5}}}));
    EXPECT_EQ(database.writeRecord(u"无"_s, {{u"A"_s, 1}}), Velm::VelmTableNotExist);
    EXPECT_EQ(database.writeRecord(u"管线"_s, {{u"Depth"_s, 1}}), Velm::VelmSqlExecFailed);
    EXPECT_TRUE(database.getLastErrorText().contains(u"NOT NULL"_s)) << database.getLastErrorText().toStdString();
}

TEST_F(DatabaseOdbc, BindsBytesToColumnsOfAnyName)
{
    const QByteArray bytes = QByteArray::fromHex("00ff27003a3f0a");
    ASSERT_EQ(database.executeSql(u"create table B (图像 blob, a_1 int, 图 text)"_s), Velm::VelmOk);
    EXPECT_EQ(database.writeRecordBlob(u"B"_s, {{u"图像"_s, bytes}, {u"a_1"_s, 7}, {u"图"_s, u"?:a'"_s}}),
              Velm::VelmOk);
    EXPECT_EQ(database.readRecord(u"B"_s, {{u"a_1"_s, 7}}, true),
              (Record{{u"图像"_s, bytes}, {u"A_1"_s, 7}, {u"图"_s, u"?:a'"_s}}));
}

TEST_F(DatabaseOdbc, KeepsWhatATransactionCommitted)
{
    ASSERT_EQ(database.executeSql(u"create table T (A int)"_s), Velm::VelmOk);
    EXPECT_EQ(database.startTransaction(true), Velm::VelmOk);
    EXPECT_EQ(database.writeRecord(u"T"_s, {{u"A"_s, 1}}), Velm::VelmOk);
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk);
    EXPECT_EQ(database.writeTable(u"T"_s, {{{u"A"_s, 2}}, {{u"A"_s, 3}}}), Velm::VelmOk);
    CVelmDatabase sqlite;
    ASSERT_TRUE(QFile::rename(s_folder + u"/x.MDB"_s, s_folder + u"/x.db"_s));
    ASSERT_EQ(sqlite.initDatabase(s_folder + u"/x.db"_s, QString()), Velm::VelmOk);
    EXPECT_EQ(sqlite.readFields(u"T"_s, u"A"_s, {{u"A"_s, 3}}), QList<QVariant>{3});
}

TEST_F(DatabaseOdbc, ClosesLaterWhatWasOpenThen)
{
    const QString name = database.getQSqlDatabase().connectionName();
    EXPECT_EQ(database.closeDatabase(true, 1), Velm::VelmOk);
    EXPECT_EQ(database.executeSql(u"create table T (A int)"_s), Velm::VelmOk);
    letPass(20);
    EXPECT_FALSE(database.isOpen());
    EXPECT_FALSE(QSqlDatabase::contains(name));

    ASSERT_EQ(open(u"y"_s), Velm::VelmOk);
    EXPECT_EQ(database.closeDatabase(true, 1), Velm::VelmOk);
    ASSERT_EQ(open(u"z"_s), Velm::VelmOk);
    letPass(20);
    EXPECT_EQ(database.executeSql(u"create table T (A int)"_s), Velm::VelmOk) << "opened after the close was asked for";

    EXPECT_EQ(database.closeDatabase(true, 1), Velm::VelmOk);
    database = CVelmDatabase();
    letPass(20);
}
