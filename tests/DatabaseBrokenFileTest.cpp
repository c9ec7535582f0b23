#include "CVelmDatabase.h"

#include "support/Printers.h"
#include "support/Records.h"
#include "support/TemporaryRoot.h"

#include <QFile>

namespace {

const QString kTable = u"地块"_s;

struct BrokenCase
{
    const char* name;
    QString file;                 ///< what is opened: the database of 400 rows "库.db" or something else
    void (*damage)(QFile& file);  ///< what is done to the database before
    Velm::ErrorStatus opening;
    const char* error;  ///< part of the text behind a failed statement
    unsigned int rows;  ///< how many can still be read
};

class DatabaseBrokenFile : public TemporaryRoot, public testing::WithParamInterface<BrokenCase>
{
protected:
    void SetUp() override
    {
        CVelmDatabase database;
        ASSERT_EQ(database.initDatabase(path(u"库.db"_s), QString()), Velm::VelmOk);
        ASSERT_EQ(database.executeSql(u"create table 地块 (A int, B text)"_s), Velm::VelmOk);
        const Rows rows(400, {{u"A"_s, 1}, {u"B"_s, QString(100, QChar(u'地'))}});
        ASSERT_EQ(database.writeTable(kTable, rows), Velm::VelmOk);
    }
};

void overwrite(QFile& file, qint64 position, const QByteArray& bytes)
{
    ASSERT_TRUE(file.seek(position));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

void leave(QFile&) {}

void makeText(QFile& file)
{
    overwrite(file, 0, QByteArray("[index]\n").repeated(100));
}

void cutInHalf(QFile& file)
{
    ASSERT_TRUE(file.resize(file.size() / 2));
}

void scramblePages(QFile& file)
{
    overwrite(file, 4096, QByteArray(static_cast<int>(file.size()) - 4096, '\xff'));
}

/// The byte that tells which version of the format may be written: a program that knows 2 only reads.
void makeNewer(QFile& file)
{
    overwrite(file, 18, "\x03");
}

}  // namespace

TEST_P(DatabaseBrokenFile, GivesStatusAndTextAndNeutralAnswers)
{
    const BrokenCase& c = GetParam();
    {
        QFile file(path(u"库.db"_s));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        c.damage(file);
    }
    CVelmDatabase database;
    EXPECT_EQ(database.initDatabase(c.file.isEmpty() ? c.file : path(c.file), QString()), c.opening);
    EXPECT_EQ(database.isOpen(), c.opening == Velm::VelmOk);

    EXPECT_EQ(database.readTable(kTable).isEmpty(), c.rows == 0);
    EXPECT_EQ(database.recordCount(kTable, {}), c.rows);
    Rows rows;
    EXPECT_EQ(database.executeSql(u"select * from 地块 order by A"_s, rows),
              c.rows > 0 ? Velm::VelmOk : Velm::VelmSqlExecFailed);
    EXPECT_EQ(database.executeSql(u"insert into 地块 values (2, 'x')"_s), Velm::VelmSqlExecFailed);
    const QString error = database.getLastErrorText();
    EXPECT_TRUE(error.contains(QLatin1String(c.error))) << error.toStdString();
    EXPECT_NE(database.writeRecord(kTable, {{u"A"_s, 1}}), Velm::VelmOk);
    EXPECT_EQ(database.writeTable(kTable, Rows(3)), Velm::VelmWriteTableFailed);
    EXPECT_NE(database.updataRecord(kTable, {{u"A"_s, 1}}, {{u"A"_s, 7}}), Velm::VelmOk);
    EXPECT_EQ(database.closeDatabase(false, 0), Velm::VelmOk);

    EXPECT_EQ(database.initDatabase(path(u"good.db"_s), QString()), Velm::VelmOk);
    EXPECT_EQ(database.executeSql(u"create table 地块 (A)"_s), Velm::VelmOk);
}
INSTANTIATE_TEST_SUITE_P(
    Files, DatabaseBrokenFile,
    testing::Values(BrokenCase{"Text", u"库.db"_s, makeText, Velm::VelmOk, "file is not a database", 0},
                    BrokenCase{"Half", u"库.db"_s, cutInHalf, Velm::VelmOk, "malformed", 0},
                    BrokenCase{"PagesScrambled", u"库.db"_s, scramblePages, Velm::VelmOk, "malformed", 0},
                    BrokenCase{"ReadOnly", u"库.db"_s, makeNewer, Velm::VelmOk, "readonly", 400},
                    BrokenCase{"Folder", u"config"_s, leave, Velm::VelmDatabaseOpenFailed, "", 0},
                    BrokenCase{"FolderMissing", u"无/库.db"_s, leave, Velm::VelmDatabaseOpenFailed, "", 0},
                    BrokenCase{"NoName", QString(), leave, Velm::VelmInvalidValue, "", 0}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(DatabaseBrokenFile, LockedByAnotherConnectionIsLeftAloneUntilTheLockGoes)
{
    CVelmDatabase database, other;
    ASSERT_EQ(database.initDatabase(path(u"库.db"_s), QString()), Velm::VelmOk);
    ASSERT_EQ(database.executeSql(u"pragma busy_timeout = 1"_s), Velm::VelmOk);
    ASSERT_EQ(other.initDatabase(path(u"库.db"_s), QString()), Velm::VelmOk);
    ASSERT_EQ(other.executeSql(u"begin exclusive"_s), Velm::VelmOk);
    EXPECT_EQ(database.executeSql(u"delete from 地块"_s), Velm::VelmSqlExecFailed);
    EXPECT_TRUE(database.getLastErrorText().contains(u"locked"_s));
    EXPECT_EQ(database.writeTable(kTable, Rows(1, {{u"A"_s, 1}})), Velm::VelmWriteTableFailed);
    EXPECT_TRUE(database.readTable(kTable).isEmpty());
    ASSERT_EQ(other.executeSql(u"commit"_s), Velm::VelmOk);
    EXPECT_EQ(database.readTable(kTable).size(), 400);
}
