#include "CVelmDatabase.h"

#include "support/Printers.h"
#include "support/Records.h"
#include "support/TemporaryRoot.h"

#include <QFile>

namespace {

const QString kTable = u"地块"_s;

/// A file with a table of 400 rows.
class DatabaseBroken : public TemporaryRoot
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(database.initDatabase(file, QString()), Velm::VelmOk);
        ASSERT_EQ(database.executeSql(u"create table 地块 (A int, B text)"_s), Velm::VelmOk);
        const Rows rows(400, {{u"A"_s, 1}, {u"B"_s, QString(100, u'地')}});
        ASSERT_EQ(database.writeTable(kTable, rows), Velm::VelmOk);
    }

    void expectRows(unsigned int count)
    {
        EXPECT_EQ(database.recordCount(kTable, {}), count);
        EXPECT_EQ(database.readTable(kTable).size(), static_cast<int>(count));
    }

    void expectNothingIsWritten()
    {
        EXPECT_NE(database.writeRecord(kTable, {{u"A"_s, 1}}), Velm::VelmOk);
        EXPECT_NE(database.updataRecord(kTable, {{u"A"_s, 1}}, {{u"A"_s, 7}}), Velm::VelmOk);
        EXPECT_EQ(database.writeTable(kTable, Rows(3)), Velm::VelmWriteTableFailed);
    }

    const QString file = path(u"库.db"_s);
    CVelmDatabase database;
};

struct BrokenCase
{
    const char* name;
    void (*damage)(QFile& file);
    unsigned int rows;  ///< how many can still be read
    const char* error;  ///< part of the text behind a write
};

class DatabaseBrokenFile : public DatabaseBroken, public testing::WithParamInterface<BrokenCase>
{};

}  // namespace

TEST_P(DatabaseBrokenFile, FailsWithATextWhereItIsUsed)
{
    database.closeDatabase(false, 0);
    QFile broken(file);
    ASSERT_TRUE(broken.open(QIODevice::ReadWrite));
    GetParam().damage(broken);
    broken.close();
    EXPECT_EQ(database.initDatabase(file, QString()), Velm::VelmOk);
    expectRows(GetParam().rows);
    expectNothingIsWritten();
    EXPECT_EQ(database.executeSql(u"insert into 地块 values (2, 'x')"_s), Velm::VelmSqlExecFailed);
    const QString error = database.getLastErrorText();
    EXPECT_TRUE(error.contains(QLatin1String(GetParam().error))) << error.toStdString();
}
INSTANTIATE_TEST_SUITE_P(
    Files, DatabaseBrokenFile,
    testing::Values(
        BrokenCase{"Text", [](QFile& f) { f.write(QByteArray("[index]\n").repeated(100)); }, 0,
                   "not a database"},
        BrokenCase{"Half", [](QFile& f) { f.resize(f.size() / 2); }, 0, "malformed"},
        BrokenCase{"ScrambledPages",
                   [](QFile& f) {
                       f.seek(4096);
                       f.write(QByteArray(40000, '\xff'));
                   },
                   0, "malformed"},
        BrokenCase{"ReadOnly",  // this byte of the header is the version needed for writing
                   [](QFile& f) {
                       f.seek(18);
                       f.putChar(3);
                   },
                   400, "readonly"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(DatabaseBroken, NamesOpenNothing)
{
    for (const QString& name : {path(u"config"_s), path(u"无/库.db"_s), QString()}) {
        EXPECT_EQ(database.initDatabase(name, QString()),
                  name.isEmpty() ? Velm::VelmInvalidValue : Velm::VelmDatabaseOpenFailed);
        EXPECT_FALSE(database.isOpen());
        expectRows(0);
        expectNothingIsWritten();
        EXPECT_EQ(database.executeSql(u"select 1"_s), Velm::VelmSqlExecFailed);
    }
    EXPECT_EQ(database.initDatabase(file, QString()), Velm::VelmOk);
    expectRows(400);
}

TEST_F(DatabaseBroken, LocksLastUntilTheOtherConnectionEndsThem)
{
    CVelmDatabase other;
    ASSERT_EQ(database.executeSql(u"pragma busy_timeout = 1"_s), Velm::VelmOk);
    ASSERT_EQ(other.initDatabase(file, QString()), Velm::VelmOk);
    ASSERT_EQ(other.executeSql(u"begin exclusive"_s), Velm::VelmOk);
    EXPECT_EQ(database.deleteRecord(kTable, {}), Velm::VelmOk) << "the table cannot be seen";
    EXPECT_EQ(database.executeSql(u"delete from 地块"_s), Velm::VelmSqlExecFailed);
    EXPECT_TRUE(database.getLastErrorText().contains(u"locked"_s));
    expectRows(0);
    expectNothingIsWritten();
    ASSERT_EQ(other.executeSql(u"commit"_s), Velm::VelmOk);
    expectRows(400);
}
