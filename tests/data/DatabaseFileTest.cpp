#include "CVelmDatabase.h"

#include "support/LogLines.h"
#include "support/TemporaryRoot.h"

#include <QDateTime>

#include <limits>

namespace {

const QString kTable = u"管线表"_s, kKey = u"编号"_s, kValue = u"值"_s;

Record row(const QVariant& key, const QVariant& value)
{
    return {{kKey, key}, {kValue, value}};
}

/// A SQLite file with an empty table whose second column takes values of any type as they come.
class DatabaseFile : public TemporaryRoot
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(database.initDatabase(file, QString()), Velm::VelmOk);
        execute(u"create table 管线表 (编号 integer, 值)"_s);
    }

    void execute(const QString& sql) { ASSERT_EQ(database.executeSql(sql), Velm::VelmOk); }

    /// Expects that @p count rows can be read and that nothing can be written.
    void expectReadOnly(unsigned int count)
    {
        EXPECT_EQ(database.recordCount(kTable, {}), count);
        EXPECT_EQ(database.readTable(kTable).size(), static_cast<int>(count));
        EXPECT_NE(database.writeRecord(kTable, row(1, 1)), Velm::VelmOk);
        EXPECT_EQ(database.writeTable(kTable, Rows(3)), Velm::VelmSqlExecFailed);
        EXPECT_EQ(database.executeSql(u"delete from 管线表"_s), Velm::VelmSqlExecFailed);
    }

    /// Fills the table, and while the file is closed writes @p bytes over what lies there.
    void damage(int rows, int position, const QByteArray& bytes, int size = 0)
    {
        ASSERT_EQ(database.writeTable(kTable, Rows(rows, row(1, QString(100, u'地')))),
                  Velm::VelmOk);
        database.closeDatabase(false, 0);
        QFile broken(file);
        ASSERT_TRUE(broken.open(QIODevice::ReadWrite) && (size == 0 || broken.resize(size)));
        ASSERT_TRUE(broken.seek(position) && broken.write(bytes) == bytes.size());
        broken.close();
        EXPECT_EQ(database.initDatabase(file, QString()), Velm::VelmOk);
    }

    const QString file = path(u"库 %1.db"_s);
    CVelmDatabase database;
};

using Int64 = std::numeric_limits<qint64>;
using Real = std::numeric_limits<double>;

const struct
{
    QVariant written, read;
    bool hasText = true;  ///< in a condition
} kStored[] = {
    {true, Q_INT64_C(1)},
    {4294967295U, Q_INT64_C(4294967295)},
    {Int64::min(), Int64::min()},
    {Int64::max(), Int64::max()},
    {0.1, 0.1},
    {1.0 / 3, 1.0 / 3},
    {-40512345.6789, -40512345.6789},
    {1e22, 1e22},
    {Real::denorm_min(), Real::denorm_min()},
    {Real::min(), Real::min()},
    {Real::max(), Real::max()},
    {QChar(u'K'), u"K"_s, false},
    {u"测绘 %1 %2 \"[;]\"\n\U00020000"_s, u"测绘 %1 %2 \"[;]\"\n\U00020000"_s},
    {u""_s, u""_s},
    {QDate(2024, 2, 29), u"2024-02-29"_s, false},
    {QTime(7, 5, 9, 40), u"07:05:09.040"_s, false},
    {QDateTime(QDate(2024, 2, 29), QTime(7, 5, 9, 1)), u"2024-02-29T07:05:09.001"_s, false},
    {QVariant(), QVariant(QVariant::String)},
};

struct DamageCase
{
    const char* name;
    int size, position;  ///< the file is cut to this size, and its bytes from here are overwritten
    QByteArray bytes;
    unsigned int rows;  ///< how many can still be read
    const char* error;  ///< part of the text about a write
};

class DatabaseDamage : public DatabaseFile, public testing::WithParamInterface<DamageCase>
{};

}  // namespace

TEST_F(DatabaseFile, KeepsValuesToTheLastBitAsLiteralsAndBound)
{
    for (const auto& [written, read, hasText] : kStored) {
        SCOPED_TRACE(testing::PrintToString(written));
        ASSERT_EQ(database.writeTable(kTable, {row(1, written)}), Velm::VelmOk);
        EXPECT_EQ(database.recordCount(kTable, row(1, written)), hasText ? 1U : 0U);
        ASSERT_EQ(database.writeRecordBlob(kTable, row(2, written)), Velm::VelmOk);
        for (const int key : {1, 2}) {
            const QVariant value = database.readRecord(kTable, kValue, {{kKey, key}}, true);
            EXPECT_EQ(value, read) << key;
            EXPECT_EQ(value.toDouble(), read.toDouble()) << key;  // variants compare roughly
            EXPECT_EQ(value.type(), read.type()) << key;
            EXPECT_EQ(value.isNull(), read.isNull()) << key;
        }
    }
}

TEST_F(DatabaseFile, KeepsBytesInColumnsOfAnyName)
{
    const QByteArray bytes = QByteArray::fromHex("00ff27003a3f0a00");
    execute(u"create table B (a int, 图像 blob, A图 blob, A表 text)"_s);
    const Record record{{u"图像"_s, bytes}, {u"A表"_s, u"'%1'"_s}, {u"A图"_s, bytes.left(7)}};
    EXPECT_EQ(database.writeRecordBlob(u"B"_s, record), Velm::VelmOk);
    Rows rows(1);
    EXPECT_EQ(database.executeSql(u"select 图像, a图, A表 from B"_s, rows), Velm::VelmOk);
    EXPECT_EQ(rows, (Rows{Record(), record})) << "appended, with upper-case keys";
}

TEST_F(DatabaseFile, UpdatesWhatMatchesAndInsertsWhatDoesNot)
{
    EXPECT_EQ(database.updataRecord(kTable, {{kValue, u"a"_s}}, {{kKey, 1}}), Velm::VelmOk);
    EXPECT_EQ(database.updataRecord(kTable, row(3, u"%2"_s), {{kKey, 1}}), Velm::VelmOk);
    QString sql = u"before"_s;
    EXPECT_EQ(database.getUpdataSql(sql, kTable, {{kValue, 0.5}}, {{kKey, 2}}), Velm::VelmOk);
    EXPECT_EQ(sql, u"before"_s);
    EXPECT_EQ(database.readTable(kTable), (Rows{row(3, u"%2"_s), row(2, 0.5)}));
    EXPECT_EQ(database.updataRecord(u"无"_s, {}, {{kKey, 1}}), Velm::VelmTableNotExist);
}

TEST_F(DatabaseFile, ReplacesATableOrTellsThatRowsAreMissing)
{
    execute(u"create unique index once on 管线表 (编号)"_s);
    const Rows rows{row(2, u"b"_s), row(1, u"a"_s)};
    EXPECT_EQ(database.writeTable(kTable, {row(9, 0)}), Velm::VelmOk);
    EXPECT_EQ(database.writeTable(kTable, rows), Velm::VelmOk);
    EXPECT_EQ(database.writeTable(kTable, {rows[0], rows[0], rows[1]}), Velm::VelmWriteTableFailed);
    EXPECT_EQ(database.readTable(kTable), rows) << "the rows that can be written are";
    EXPECT_EQ(database.writeTable(u"无"_s, rows), Velm::VelmWriteTableFailed);
}

TEST_F(DatabaseFile, KeepsTheOldRowsOfATableThatCannotBeReplaced)
{
    execute(u"create table once (编号 integer primary key on conflict rollback, 值)"_s);
    const Rows old{row(1, u"a"_s), row(2, u"b"_s)};
    ASSERT_EQ(database.writeTable(u"once"_s, old), Velm::VelmOk);
    EXPECT_EQ(database.writeTable(u"once"_s, {row(5, 0), row(5, 0), row(6, 0)}),
              Velm::VelmSqlExecFailed)
        << "the second row makes SQLite roll back";
    execute(u"create trigger t before delete on once begin select raise(fail, 'kept'); end"_s);
    EXPECT_EQ(database.writeTable(u"once"_s, {row(7, 0)}), Velm::VelmSqlExecFailed);
    EXPECT_EQ(database.getLastErrorText().section(u' ', 0, 0), u"kept"_s);
    EXPECT_EQ(database.readTable(u"once"_s), old);
}

TEST_F(DatabaseFile, RefusesStatementsWithANul)
{
    const QString nul = u"a"_s + QChar::Null + u"b"_s;
    ASSERT_EQ(database.writeTable(kTable, {row(1, u"x"_s), row(2, u"y"_s)}), Velm::VelmOk);
    EXPECT_EQ(database.updataRecord(kTable, {{kValue, nul}}, {{kKey, 1}}), Velm::VelmSqlExecFailed);
    EXPECT_EQ(database.deleteRecord(kTable, {{kValue, nul}}), Velm::VelmSqlExecFailed);
    EXPECT_EQ(database.readTable(kTable), (Rows{row(1, u"x"_s), row(2, u"y"_s)}));
}

TEST_F(DatabaseFile, ShowsATransactionToOthersWhenItEnds)
{
    CVelmDatabase other;
    ASSERT_EQ(other.initDatabase(file, QString()), Velm::VelmOk);
    ASSERT_EQ(database.startTransaction(true), Velm::VelmOk);
    ASSERT_EQ(database.writeTable(kTable, Rows(2, row(1, 1))), Velm::VelmOk);
    EXPECT_EQ(other.recordCount(kTable, {}), 0U);
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk);
    EXPECT_EQ(other.recordCount(kTable, {}), 2U);
    ASSERT_EQ(database.startTransaction(true), Velm::VelmOk);
    EXPECT_EQ(database.deleteRecord(kTable, {{kKey, 1}}), Velm::VelmOk);
    ASSERT_EQ(database.initDatabase(file, QString()), Velm::VelmOk);
    EXPECT_EQ(database.recordCount(kTable, {}), 2U) << "closing commits nothing";
}

TEST_F(DatabaseFile, HasOneTransactionAtATimeUntilTheLastCopyGoes)
{
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk) << "none was begun";
    for (const bool begin : {false, true, true, false})
        EXPECT_EQ(database.startTransaction(begin), Velm::VelmOk) << begin;
    execute(u"begin"_s);
    EXPECT_EQ(database.startTransaction(true), Velm::VelmTransactionFailed);
    EXPECT_EQ(database.startTransaction(true), Velm::VelmOk) << "a failed start is a start";
    execute(u"rollback"_s);
    EXPECT_EQ(database.endTransaction(), Velm::VelmRollbackFailed);
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk) << "a failed end is an end";

    const int open = QSqlDatabase::connectionNames().size();
    CVelmDatabase copy(database);
    EXPECT_EQ(copy.startTransaction(true), Velm::VelmOk);
    copy.writeRecord(kTable, row(1, 1));
    database = CVelmDatabase();
    database = std::exchange(copy, CVelmDatabase());
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk);
    EXPECT_EQ(database.recordCount(kTable, {}), 1U);
    database = copy;
    EXPECT_EQ(QSqlDatabase::connectionNames().size(), open - 1);
}

TEST_F(DatabaseFile, IsReplacedWithinATransactionBegunWithoutTheObject)
{
    execute(u"begin"_s);
    EXPECT_EQ(database.writeTable(kTable, {row(1, 1)}), Velm::VelmOk);
    EXPECT_TRUE(database.getQSqlDatabase().rollback()) << "it was committed";
    EXPECT_EQ(database.recordCount(kTable, {}), 0U);
    ASSERT_EQ(database.startTransaction(true), Velm::VelmOk);
    EXPECT_TRUE(database.getQSqlDatabase().rollback()) << "none was begun";
}

TEST_F(DatabaseFile, ThatCannotBeCommittedIsNotReportedAsReplaced)
{
    CVelmDatabase reader;
    ASSERT_EQ(database.writeTable(kTable, {row(1, u"old"_s)}), Velm::VelmOk);
    execute(u"pragma busy_timeout = 1"_s);
    ASSERT_EQ(reader.initDatabase(file, QString()), Velm::VelmOk);
    ASSERT_EQ(reader.startTransaction(true), Velm::VelmOk);
    ASSERT_EQ(reader.recordCount(kTable, {}), 1U);  // holds a shared lock from here
    EXPECT_EQ(database.writeTable(kTable, {row(1, u"new"_s)}), Velm::VelmSqlExecFailed);
    EXPECT_EQ(database.startTransaction(true), Velm::VelmOk);
    EXPECT_EQ(database.deleteRecord(kTable, {}), Velm::VelmOk);
    EXPECT_EQ(database.endTransaction(), Velm::VelmCommitFailed);
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk) << "it was rolled back";
    EXPECT_EQ(database.readTable(kTable), Rows{row(1, u"old"_s)});
}

TEST_F(DatabaseFile, ThatIsClosedLeavesTheDefaultConnectionOfTheHostAlone)
{
    {
        QSqlDatabase host = QSqlDatabase::addDatabase(u"QSQLITE"_s);
        host.setDatabaseName(file);
        ASSERT_TRUE(host.open());
    }
    database.closeDatabase(false, 0);
    expectReadOnly(0);
    EXPECT_FALSE(CVelmDatabase().existTable(kTable));
    EXPECT_EQ(CVelmDatabase().writeRecordBlob(kTable, row(1, 1)), Velm::VelmSqlExecFailed);
    QSqlDatabase::removeDatabase(QLatin1String(QSqlDatabase::defaultConnection));
}

#ifdef Q_OS_UNIX  // a process of its own is forked
TEST(DatabaseAtExit, IsClosedWithoutACrashAfterTheApplication)
{
    EXPECT_EXIT(
        {
            static CVelmDatabase database;
            database.initDatabase(u":memory:"_s, QString());
            exit(database.isOpen() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}
#endif

TEST_F(DatabaseFile, ReadsByConditionAndOrder)
{
    execute(u"create table S (Aa text, b text, n int)"_s);
    execute(u"insert into S values ('X','y',1), ('x','Y',2), ('x','Y',3), ('z','y',0)"_s);
    const auto numbers = [this](const Record& where, bool caseSensitive) {
        QString list;
        const QPair<QString, Velm::DataBaseOrderByType> first(u"Aa"_s, Velm::OrderDescending),
            second(u"N"_s, Velm::OrderDescending);
        for (const Record& r : database.readRecords(u"S"_s, where, {first, second}, caseSensitive))
            list += r.value(u"N"_s).toString();
        return list;
    };
    EXPECT_EQ(numbers({}, true), u"0321"_s);
    EXPECT_EQ(numbers({{u"aA"_s, u"x"_s}}, true), u"32"_s);
    EXPECT_EQ(numbers({{u"aa"_s, u"X"_s}}, false), u"321"_s);
    EXPECT_EQ(numbers({{u"aa"_s, u"x"_s}, {u"b"_s, u"y"_s}}, false), u"32"_s) << "the last term";
    EXPECT_EQ(numbers({{u"aa"_s, QDate(2024, 1, 1)}}, true), QString());
    EXPECT_EQ(numbers({{u"aa"_s, QVariant()}}, true), QString()) << "no term is not all rows";
    EXPECT_EQ(database.readFields(u"S"_s, u"N"_s, {{u"aA"_s, u"x"_s}}), (QList<QVariant>{2, 3}));
    EXPECT_EQ(database.readRecord(u"S"_s, {{u"n"_s, 2}}, true).value(u"AA"_s), u"x"_s);
    EXPECT_FALSE(database.readRecord(u"S"_s, u"n"_s, {{u"n"_s, 5}}, true).isValid());
}

TEST_F(DatabaseFile, TellsItsTablesAndColumns)
{
    execute(u"create table Pipe (Code text, 埋深 real)"_s);
    EXPECT_EQ(database.tableName(), (QStringList{kTable, u"Pipe"_s}));
    EXPECT_FALSE(database.existTable(u"PIPE"_s));
    EXPECT_EQ(database.allFieldName(u"PIPE"_s), (QStringList{u"Code"_s, u"埋深"_s}));
    EXPECT_TRUE(database.hasFieldName(u"Pipe"_s, u"CODE"_s));
    EXPECT_EQ(database.columnName(u"Pipe"_s, 1), u"埋深"_s);
    EXPECT_EQ(database.columnType(u"Pipe"_s, u"埋深"_s), QVariant::Double);
    for (const QString& table : {u"Pipe"_s, u"无"_s}) {
        EXPECT_EQ(database.columnType(table, u"无"_s), QVariant::Invalid);
        EXPECT_EQ(database.columnPrecision(table, u"无"_s), 0U);
        EXPECT_EQ(database.columnName(table, -1), QString());
        EXPECT_EQ(database.columnType(table, 2), QVariant::Invalid);
        EXPECT_EQ(database.columnLength(table, 2), 0);
        EXPECT_EQ(database.columnPrecision(table, -1), 0);
    }
}

TEST_F(DatabaseFile, RenamesAColumnWithItsValues)
{
    execute(u"create table 高程 (Z real, n int)"_s);
    execute(u"insert into 高程 values (1.5, 1)"_s);
    EXPECT_EQ(database.renameColumnName(u"高程"_s, u"Z"_s, u"地面"_s), Velm::VelmOk);
    EXPECT_EQ(database.readTable(u"高程"_s), Rows{Record({{u"N"_s, 1}, {u"地面"_s, 1.5}})});
    EXPECT_EQ(database.columnType(u"高程"_s, u"地面"_s), QVariant::Double);
    EXPECT_EQ(database.renameColumnName(u"高程"_s, u"无"_s, u"新"_s), Velm::VelmSqlExecFailed);
    EXPECT_TRUE(database.hasFieldName(u"高程"_s, u"新"_s)) << "a failed copy leaves it";
}

TEST_F(DatabaseFile, TellsTheErrorOfTheLastStatementOfAnyObject)
{
    const CVelmDatabase other;
    EXPECT_EQ(database.writeRecord(kTable, row(1, u"O'Neil"_s)), Velm::VelmSqlExecFailed);
    EXPECT_TRUE(other.getLastErrorText().contains(u"syntax error"_s));
    EXPECT_EQ(database.writeRecordBlob(kTable, row(1, u"O'Neil"_s)), Velm::VelmOk);
    EXPECT_EQ(other.getLastErrorText(), QString());
    EXPECT_EQ(database.writeRecordBlob(u"无"_s, row(1, 1)), Velm::VelmSqlExecFailed);
    EXPECT_TRUE(other.getLastErrorText().contains(u"no such table"_s));
}

TEST_P(DatabaseDamage, IsToldWhereTheFileIsUsed)
{
    damage(400, GetParam().position, GetParam().bytes, GetParam().size);
    expectReadOnly(GetParam().rows);
    const QString error = database.getLastErrorText();
    EXPECT_TRUE(error.contains(QLatin1String(GetParam().error))) << error.toStdString();
}
INSTANTIATE_TEST_SUITE_P(
    Files, DatabaseDamage,
    testing::Values(DamageCase{"Text", 800, 0, QByteArray(800, 'x'), 0, "not a database"},
                    DamageCase{"Half", 70000, 0, "", 0, "malformed"},
                    DamageCase{"Scrambled", 140000, 4096, QByteArray(90000, '\xff'), 0,
                               "malformed"},
                    DamageCase{"NewerThanCanBeWritten", 147456, 18, "\3", 400, "readonly"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(DatabaseFile, TellsOfRowsThatCannotBeRead)
{
    damage(4000, 300000, QByteArray(40000, '\xff'));
    const int readable = database.readTable(kTable).size();
    EXPECT_TRUE(readable > 0 && readable < 4000) << readable;
    EXPECT_TRUE(database.getLastErrorText().contains(u"malformed"_s));
}

TEST_F(DatabaseFile, WhosePathIsTooLongTellsSo)
{
    QString folder = root();
    while (folder.toUtf8().size() < 1100)
        folder += u"/一个很长的文件夹名字"_s;
    ASSERT_TRUE(QDir().mkpath(folder));
    const LogLines log;
    EXPECT_EQ(CVelmDatabase().initDatabase(folder + u"/a.db"_s, QString()),
              Velm::VelmDatabaseOpenFailed);
    EXPECT_TRUE(LogLines::take().join(u'\n').contains(u"SQLite takes"_s));
    const QString name = path(QString(u"a"_s).repeated(250));
    EXPECT_EQ(CVelmDatabase().initDatabase(name, QString()), Velm::VelmDatabaseOpenFailed);
    EXPECT_FALSE(QFile::exists(name)) << "no journal could be made beside it";
}

TEST_F(DatabaseFile, ThatIsAFolderOrHasNoFolderOrNameIsNotOpened)
{
    LogLines log;
    for (const QString& name : {path(u"config"_s), path(u"无/库.db"_s), QString()}) {
        EXPECT_EQ(database.initDatabase(name, QString()),
                  name.isEmpty() ? Velm::VelmInvalidValue : Velm::VelmDatabaseOpenFailed);
        const QString line = log.take().join(u'\n');
        EXPECT_EQ(line.contains(name + u"\": unable to open database file"_s), !name.isEmpty());
        EXPECT_EQ(line.count(u'\n'), 0);
        EXPECT_FALSE(database.isOpen());
        expectReadOnly(0);
    }
}

TEST_F(DatabaseFile, StaysLockedUntilTheOtherConnectionEndsIt)
{
    CVelmDatabase other;
    execute(u"pragma busy_timeout = 1"_s);
    ASSERT_EQ(other.initDatabase(file, QString()), Velm::VelmOk);
    ASSERT_EQ(other.writeRecord(kTable, row(1, 1)), Velm::VelmOk);
    ASSERT_EQ(other.executeSql(u"begin exclusive"_s), Velm::VelmOk);
    expectReadOnly(0);
    EXPECT_TRUE(database.getLastErrorText().contains(u"locked"_s));
    ASSERT_EQ(other.executeSql(u"commit"_s), Velm::VelmOk);
    EXPECT_EQ(database.recordCount(kTable, {}), 1U);
}
