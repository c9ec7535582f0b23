#include "CVelmDatabase.h"

#include "support/Printers.h"
#include "support/Records.h"
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

    const QString file = path(u"库 %1.db"_s);
    CVelmDatabase database;
};

struct StoredCase
{
    const char* name;
    QVariant written, read;
};

class DatabaseRoundTrip : public DatabaseFile, public testing::WithParamInterface<StoredCase>
{};

using Limits = std::numeric_limits<qint64>;

}  // namespace

TEST_P(DatabaseRoundTrip, IsTheSameForLiteralsAndBoundValues)
{
    EXPECT_EQ(database.writeRecord(kTable, row(1, GetParam().written)), Velm::VelmOk);
    EXPECT_EQ(database.writeRecordBlob(kTable, row(2, GetParam().written)), Velm::VelmOk);
    for (const int key : {1, 2}) {
        const QVariant value = database.readRecord(kTable, kValue, {{kKey, key}}, true);
        EXPECT_EQ(value, GetParam().read) << key;
        EXPECT_EQ(value.type(), GetParam().read.type()) << key;
        EXPECT_EQ(value.isNull(), GetParam().read.isNull()) << key;
    }
}
INSTANTIATE_TEST_SUITE_P(
    Values, DatabaseRoundTrip,
    testing::Values(StoredCase{"Bool", true, Q_INT64_C(1)}, StoredCase{"Int", -5, Q_INT64_C(-5)},
                    StoredCase{"UInt", 4294967295U, Q_INT64_C(4294967295)},
                    StoredCase{"Smallest", Limits::min(), Limits::min()},
                    StoredCase{"Greatest", Limits::max(), Limits::max()},
                    StoredCase{"Double", 512345.67890123, 512345.67890123},
                    StoredCase{"Text", u"测绘 %1 %2 \"[;]\"\n\U00020000"_s,
                               u"测绘 %1 %2 \"[;]\"\n\U00020000"_s},
                    StoredCase{"EmptyText", u""_s, u""_s},
                    StoredCase{"Date", QDate(2024, 2, 29), u"2024-02-29"_s},
                    StoredCase{"Time", QTime(7, 5, 9, 40), u"07:05:09.040"_s},
                    StoredCase{"DateTime", QDateTime(QDate(2024, 2, 29), QTime(7, 5, 9, 1)),
                               u"2024-02-29T07:05:09.001"_s},
                    StoredCase{"Null", QVariant(), QVariant(QVariant::String)}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(DatabaseFile, KeepsEveryBitOfADouble)
{
    execute(u"create table 高程 ([Z] real)"_s);
    for (const double z : {0.1, 1.0 / 3, 1.0 - 1e-16, -40512345.6789, 1e15, 123456789012345678.0,
                           5e-324, 2.2250738585072014e-308, std::numeric_limits<double>::max()}) {
        ASSERT_EQ(database.writeTable(u"高程"_s, {{{u"Z"_s, z}}}), Velm::VelmOk);
        EXPECT_EQ(database.recordCount(u"高程"_s, {{u"Z"_s, z}}), 1U);
        ASSERT_EQ(database.writeRecordBlob(u"高程"_s, {{u"Z"_s, z}}), Velm::VelmOk);
        EXPECT_EQ(database.readRecords(u"高程"_s, u"z"_s, {}, true, true), QList<QVariant>{z});
    }
}

TEST_F(DatabaseFile, KeepsBytesInColumnsOfAnyName)
{
    const QByteArray bytes = QByteArray::fromHex("00ff27003a3f0a00");
    execute(u"create table B (a blob, 图像 blob, A图 blob, A表 text)"_s);
    EXPECT_EQ(database.writeRecordBlob(u"B"_s, {{u"图像"_s, bytes},
                                                {u"A表"_s, u"'%1'"_s},
                                                {u"A图"_s, bytes.left(7)},
                                                {u"a"_s, QByteArray()}}),
              Velm::VelmOk);
    Rows rows(1);
    EXPECT_EQ(database.executeSql(u"select 图像, A图, A表, a is null as n from B"_s, rows),
              Velm::VelmOk);
    EXPECT_EQ(
        rows,
        (Rows{
            {},
            {{u"图像"_s, bytes}, {u"A图"_s, bytes.left(7)}, {u"A表"_s, u"'%1'"_s}, {u"N"_s, 1}}}));
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
    ASSERT_EQ(database.startTransaction(true), Velm::VelmOk);
    EXPECT_EQ(database.writeTable(kTable, {}), Velm::VelmOk);
    EXPECT_TRUE(database.getQSqlDatabase().rollback());
    EXPECT_EQ(database.readTable(kTable), rows) << "the caller's transaction was ended";
}

TEST_F(DatabaseFile, ShowsATransactionToOthersWhenItEnds)
{
    CVelmDatabase other;
    ASSERT_EQ(other.initDatabase(file, QString()), Velm::VelmOk);
    ASSERT_EQ(database.startTransaction(true), Velm::VelmOk);
    ASSERT_EQ(database.writeRecord(kTable, row(1, 1)), Velm::VelmOk);
    EXPECT_EQ(other.recordCount(kTable, {}), 0U);
    EXPECT_EQ(database.endTransaction(), Velm::VelmOk);
    EXPECT_EQ(other.recordCount(kTable, {}), 1U);
    ASSERT_EQ(database.startTransaction(true), Velm::VelmOk);
    EXPECT_EQ(database.deleteRecord(kTable, {{kKey, 1}}), Velm::VelmOk);
    ASSERT_EQ(database.initDatabase(file, QString()), Velm::VelmOk);
    EXPECT_EQ(database.recordCount(kTable, {}), 1U) << "closing commits nothing";
}

TEST_F(DatabaseFile, ReadsByConditionAndOrder)
{
    execute(u"create table [s t] (Aa text, b text, n int)"_s);
    execute(u"insert into [s t] values ('X','y',1), ('x','Y',2), ('x','Y',3), ('z','y',0)"_s);
    const auto numbers = [this](const Record& where, bool caseSensitive) {
        QString list;
        for (const Record& r : database.readRecords(
                 u"s t"_s, where,
                 {{u"Aa"_s, Velm::OrderDescending}, {u"N"_s, Velm::OrderDescending}},
                 caseSensitive))
            list += r.value(u"N"_s).toString();
        return list;
    };
    EXPECT_EQ(numbers({}, true), u"0321"_s);
    EXPECT_EQ(numbers({{u"aA"_s, u"x"_s}}, true), u"32"_s);
    EXPECT_EQ(numbers({{u"aa"_s, u"X"_s}}, false), u"321"_s);
    EXPECT_EQ(numbers({{u"aa"_s, u"x"_s}, {u"b"_s, u"y"_s}}, false), u"32"_s) << "the last term";
    EXPECT_EQ(numbers({{u"aa"_s, QDate(2024, 1, 1)}}, true), QString());
    EXPECT_EQ(numbers({{u"aa"_s, QVariant()}}, true), QString()) << "no term is not all rows";
    const QString quoted = u"[s t]"_s;
    EXPECT_EQ(database.readRecords(quoted, u"b"_s, {}, true, true).size(), 2);
    EXPECT_EQ(database.readFields(quoted, u"N"_s, {{u"aA"_s, u"x"_s}}), (QList<QVariant>{2, 3}));
    EXPECT_EQ(database.readRecord(u"s t"_s, {{u"n"_s, 2}}, true),
              (Record{{u"AA"_s, u"x"_s}, {u"B"_s, u"Y"_s}, {u"N"_s, 2}}));
    EXPECT_FALSE(database.readRecord(u"s t"_s, u"n"_s, {{u"n"_s, 5}}, true).isValid());
}

TEST_F(DatabaseFile, TellsItsTablesAndColumns)
{
    execute(u"create table Pipe (Code text, 埋深 real, N int)"_s);
    EXPECT_EQ(database.tableName().toSet(), (QSet<QString>{kTable, u"Pipe"_s}));
    EXPECT_TRUE(database.existTable(u"Pipe"_s));
    EXPECT_FALSE(database.existTable(u"PIPE"_s));
    EXPECT_EQ(database.allFieldName(u"PIPE"_s), (QStringList{u"Code"_s, u"埋深"_s, u"N"_s}));
    EXPECT_TRUE(database.hasFieldName(u"Pipe"_s, u"CODE"_s));
    EXPECT_EQ(database.columnName(u"Pipe"_s, 1), u"埋深"_s);
    EXPECT_EQ(database.columnType(u"Pipe"_s, 0), QVariant::String);
    EXPECT_EQ(database.columnType(u"Pipe"_s, u"埋深"_s), QVariant::Double);
    for (const QString& table : {u"Pipe"_s, u"无"_s}) {
        EXPECT_FALSE(database.hasFieldName(table, u"无"_s));
        EXPECT_EQ(database.columnType(table, u"无"_s), QVariant::Invalid);
        EXPECT_EQ(database.columnPrecision(table, u"无"_s), 0U);
        for (const int index : {-1, 3}) {
            EXPECT_EQ(database.columnName(table, index), QString());
            EXPECT_EQ(database.columnType(table, index), QVariant::Invalid);
            EXPECT_EQ(database.columnLength(table, index), 0);
            EXPECT_EQ(database.columnPrecision(table, index), 0);
        }
    }
    EXPECT_EQ(database.columnCount(u"无"_s), 0);
}

TEST_F(DatabaseFile, RenamesAColumnWithItsValues)
{
    execute(u"create table 高程 (Z real, n int)"_s);
    execute(u"insert into 高程 values (1.5, 1), (null, 2)"_s);
    EXPECT_EQ(database.renameColumnName(u"高程"_s, u"Z"_s, u"地面"_s), Velm::VelmOk);
    EXPECT_EQ(database.allFieldName(u"高程"_s), (QStringList{u"n"_s, u"地面"_s}));
    EXPECT_EQ(database.columnType(u"高程"_s, u"地面"_s), QVariant::Double);
    EXPECT_EQ(database.readFields(u"高程"_s, u"地面"_s, {{u"n"_s, 1}}), QList<QVariant>{1.5});
    EXPECT_EQ(database.renameColumnName(u"高程"_s, u"无"_s, u"新"_s), Velm::VelmSqlExecFailed);
    EXPECT_TRUE(database.hasFieldName(u"高程"_s, u"新"_s)) << "a failed copy leaves it";
}

TEST_F(DatabaseFile, TellsTheErrorOfTheLastStatementOfAnyObject)
{
    CVelmDatabase other;
    ASSERT_EQ(other.initDatabase(path(u"other.db"_s), QString()), Velm::VelmOk);
    EXPECT_EQ(database.writeRecord(kTable, row(1, u"O'Neil"_s)), Velm::VelmSqlExecFailed);
    EXPECT_TRUE(other.getLastErrorText().contains(u"syntax error"_s));
    EXPECT_EQ(other.executeSql(u"select 1"_s), Velm::VelmOk);
    EXPECT_EQ(database.getLastErrorText(), QString());
    Rows rows(1);
    EXPECT_EQ(database.executeSql(u"select 无"_s, rows), Velm::VelmSqlExecFailed);
    EXPECT_EQ(rows.size(), 1);
    EXPECT_EQ(database.writeRecordBlob(u"无"_s, row(1, 1)), Velm::VelmSqlExecFailed);
    EXPECT_TRUE(other.getLastErrorText().contains(u"no such table"_s));
    EXPECT_EQ(database.writeRecordBlob(kTable, row(1, u"O'Neil"_s)), Velm::VelmOk);
    EXPECT_EQ(other.getLastErrorText(), QString());
}
