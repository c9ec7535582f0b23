#include "CVelmDatabase.h"

#include "support/Printers.h"
#include "support/Records.h"
#include "support/SqlRecorder.h"

#include <gtest/gtest.h>

#include <QDateTime>

#include <functional>

namespace {

using Order = QList<QPair<QString, Velm::DataBaseOrderByType>>;

/// A database open through each of the two drivers, of which only the statements are real.
class DatabaseStatements : public testing::Test
{
protected:
    DatabaseStatements()
    {
        EXPECT_EQ(sqlite.initDatabase(u"库.db"_s, QString()), Velm::VelmOk);
        EXPECT_EQ(access.initDatabase(u"库.mdb"_s, QString()), Velm::VelmOk);
    }

    SqlRecorder sqliteDriver{"QSQLITE"};
    SqlRecorder accessDriver{"QODBC"};
    CVelmDatabase sqlite, access;
};

struct StatementCase
{
    const char* name;
    std::function<int(CVelmDatabase&)> call;
    /// Here "{exists}" is the question of each system whether T exists, "{real}" its type word.
    QString statements;
};

class DatabaseStatement : public DatabaseStatements, public testing::WithParamInterface<StatementCase>
{
};

VelmFieldItem field(const QString& name, int type, bool must)
{
    VelmFieldItem item;
    item.m_fieldName = name;
    item.m_fieldType = static_cast<Velm::FieldType>(type);
    item.m_fieldMust = must;
    item.m_fieldLength = 20;
    return item;
}

const QString T = u"T"_s, F = u"列"_s;
const Record kNone, kOne{{u"B"_s, u"x"_s}, {u"A"_s, 1}}, kKey{{u"K"_s, 7}};

const std::vector<StatementCase> kStatements = {
    {"ExistTable", [](auto& db) { return db.existTable(T) ? 0 : 1; }, u"{exists}"_s},
    {"CreateTable",
     [](auto& db) {
         return db.createTable(T, {field(u"名"_s, 0, true), field(u"I"_s, 1, false), field(u"L"_s, 2, true),
                                   field(u"R"_s, 3, false), field(u"D"_s, 4, false), field(u"X"_s, -1, false)});
     },
     u"{exists}\nDROP TABLE T\nCreate Table T([名] TEXT NOT NULL, [I] INT, [L] LONG NOT NULL, [R] {real}, "
     "[D] TEXT, [X] TEXT);"_s},
    {"ClearTables", [](auto& db) { return db.clearTable(u"A;表"_s), 0; }, u"DELETE FROM A\nDELETE FROM 表"_s},
    {"ReadTable", [](auto& db) { return db.readTable(T).size() - 1; }, u"select * from T"_s},
    {"WriteRecord", [](auto& db) { return db.writeRecord(T, kOne); },
     u"{exists}\ninsert into T ([A], [B]) values(1, 'x')"_s},
    {"WriteRecordBlob", [](auto& db) { return db.writeRecordBlob(T, kOne); },
     u"insert into T ([A],[B]) values (:A,:B)"_s},
    {"WriteTable", [](auto& db) { return db.writeTable(T, {kKey}); },
     u"DELETE FROM T\n{exists}\ninsert into T ([K]) values(7)\nselect count(*) from T "_s},
    {"Update", [](auto& db) { return db.updataRecord(T, kKey, kOne); },
     u"select count(*) from T where [A]=1 and [B]='x'\nupdate T set [K]=7 where [A]=1 and [B]='x'"_s},
    {"DeleteRecord", [](auto& db) { return db.deleteRecord(T, kOne); },
     u"{exists}\ndelete from [T] where [A]=1 and [B]='x'"_s},
    {"DeleteAllRecords", [](auto& db) { return db.deleteRecord(T, kNone); }, u"{exists}\ndelete from [T] "_s},
    {"FirstRecord", [](auto& db) { return db.readRecord(T, kOne, true).size() - 1; },
     u"select * from [T] where [A]=1 and [B]='x'"_s},
    {"FirstRecordAnyCase", [](auto& db) { return db.readRecord(T, kOne, false).size() - 1; },
     u"select * from [T] where [A]=1 and [B]='x' COLLATE NOCASE "_s},
    {"FirstField", [](auto& db) { return db.readRecord(T, F, kKey, true).toInt() - 1; },
     u"select [列] from [T] where [K]=7"_s},
    {"FirstFieldAnyCase", [](auto& db) { return db.readRecord(T, F, kNone, false).toInt() - 1; },
     u"select [列] from [T]  COLLATE NOCASE "_s},
    {"Field", [](auto& db) { return db.readRecords(T, F, kNone, false, true).size() - 1; }, u"select [列] from T"_s},
    {"DistinctFieldAnyCase", [](auto& db) { return db.readRecords(T, F, kKey, true, false).size() - 1; },
     u"select distinct [列] from T where [K]=7 COLLATE NOCASE "_s},
    {"ReadFields", [](auto& db) { return db.readFields(T, F, kKey).size() - 1; },
     u"select [列] from T where [K]=7"_s},
    {"UnsortedRecords", [](auto& db) { return db.readRecords(T, kNone, Order(), true).size() - 1; },
     u"select * from [T] "_s},
    {"SortedRecords",
     [](auto& db) {
         const Order order{{u"A"_s, Velm::OrderDescending}, {u"B"_s, Velm::OrderAscending}};
         return db.readRecords(T, kKey, order, false).size() - 1;
     },
     u"select * from [T] where [K]=7 COLLATE NOCASE  order by A desc,B asc"_s},
    {"CountAll", [](auto& db) { return db.recordCount(T, kNone) - 1; }, u"select count(*) from T "_s},
    {"CountSome", [](auto& db) { return db.recordCount(T, kKey) - 1; }, u"select count(*) from T where [K]=7"_s},
    {"Schema", [](auto& db) { return db.columnCount(T) - 1; }, u"select * from [T]"_s},
    {"AddColumn", [](auto& db) { return db.addColumnField(T, F, QVariant::LongLong, 20); },
     u"alter table T add column [列] LONG"_s},
    {"DropColumn", [](auto& db) { return db.delColumnField(T, F); }, u"alter table T drop COLUMN '列'"_s},
    {"ChangeColumnNamesTheTableTwice", [](auto& db) { return db.changeColumnType(T, F, QVariant::Int); },
     u"alter table T alter column [T] INT"_s},
    {"CopyColumn", [](auto& db) { return db.copyColumnValue(T, u"A"_s, u"B"_s); }, u"update T set B=A"_s},
    {"RenameColumn", [](auto& db) { return db.renameColumnName(T, u"N"_s, F); },
     u"select * from [T]\nselect * from [T]\nalter table T add column [列] INT\nupdate T set 列=N\n"
     "alter table T drop COLUMN 'N'"_s},
};

}  // namespace

TEST_P(DatabaseStatement, IsTheSameOnBothSystemsButForTablesAndReals)
{
    const StatementCase& c = GetParam();
    QString expected = c.statements;
    expected.replace(u"{exists}"_s, u"select count(*) from sqlite_master where type = 'table' and name = 'T'"_s);
    EXPECT_EQ(c.call(sqlite), 0);
    EXPECT_EQ(sqliteDriver.takeStatements(), expected.replace(u"{real}"_s, u"REAL"_s));

    expected = c.statements;
    expected.replace(u"{exists}"_s, u"select * from T"_s);
    EXPECT_EQ(c.call(access), 0);
    EXPECT_EQ(accessDriver.takeStatements(), expected.replace(u"{real}"_s, u"NUMERIC"_s));
}
INSTANTIATE_TEST_SUITE_P(Operations, DatabaseStatement, testing::ValuesIn(kStatements),
                         [](const auto& info) { return std::string(info.param.name); });

namespace {

struct ValueCase
{
    const char* name;
    QVariant value;
    QString condition, sqlite, access;
};

class DatabaseValue : public DatabaseStatements, public testing::WithParamInterface<ValueCase>
{
};

const QDateTime kNoon(QDate(2024, 2, 29), QTime(12, 0)), kLater = kNoon.addMSecs(1250);

}  // namespace

TEST_P(DatabaseValue, IsWrittenByItsType)
{
    const ValueCase& c = GetParam();
    sqlite.readFields(T, F, {{u"A"_s, c.value}, {u"B"_s, 1}});
    EXPECT_EQ(sqliteDriver.takeStatements(), u"select [列] from T where "_s + c.condition + u"[B]=1"_s);
    QString sql;
    EXPECT_EQ(sqlite.getInsertSql(sql, T, {{u"A"_s, c.value}}), Velm::VelmOk);
    EXPECT_EQ(sql, u"insert into T ([A]) values("_s + c.sqlite + u')');
    EXPECT_EQ(access.getInsertSql(sql, T, {{u"A"_s, c.value}}), Velm::VelmOk);
    EXPECT_EQ(sql, u"insert into T ([A]) values("_s + c.access + u')');
}
INSTANTIATE_TEST_SUITE_P(
    Values, DatabaseValue,
    testing::Values(
        ValueCase{"Bool", true, u"[A]=1 and "_s, u"1"_s, u"1"_s},
        ValueCase{"Int", -5, u"[A]=-5 and "_s, u"-5"_s, u"-5"_s},
        ValueCase{"UInt", 4294967295U, u"[A]=4294967295 and "_s, u"4294967295"_s, u"4294967295"_s},
        ValueCase{"LongLong", Q_INT64_C(-9007199254740993), u"[A]=-9007199254740993 and "_s,
                  u"-9007199254740993"_s, u"-9007199254740993"_s},
        ValueCase{"ULongLong", Q_UINT64_C(18446744073709551615), u"[A]= and "_s, u"18446744073709551615"_s,
                  u"18446744073709551615"_s},
        ValueCase{"Double", 0.1 + 0.2, u"[A]=0.30000000000000004 and "_s, u"0.30000000000000004"_s,
                  u"0.30000000000000004"_s},
        ValueCase{"Float", 0.5F, u"[A]=0.5 and "_s, u"0.5"_s, u"0.5"_s},
        ValueCase{"Char", QChar(u'K'), u"[A]=K and "_s, u"'K'"_s, u"'K'"_s},
        ValueCase{"Text", u"%1[B]%2"_s, u"[A]='%1[B]%2' and "_s, u"'%1[B]%2'"_s, u"'%1[B]%2'"_s},
        ValueCase{"QuoteUnescaped", u"O'N"_s, u"[A]='O'N' and "_s, u"'O'N'"_s, u"'O'N'"_s},
        ValueCase{"Date", kNoon.date(), u"[A]= and "_s, u"'2024-02-29'"_s, u"#2024-02-29#"_s},
        ValueCase{"Time", kNoon.time(), u"[A]= and "_s, u"'12:00:00'"_s, u"#12:00:00#"_s},
        ValueCase{"Fraction", kLater.time(), u"[A]= and "_s, u"'12:00:01.250'"_s, u"#12:00:01#"_s},
        ValueCase{"DateTime", kNoon, u"[A]= and "_s, u"'2024-02-29T12:00:00'"_s, u"#2024-02-29 12:00:00#"_s},
        ValueCase{"Invalid", QVariant(), QString(), u"null"_s, u"null"_s},
        ValueCase{"NullInt", QVariant(QVariant::Int), QString(), u"null"_s, u"null"_s},
        ValueCase{"NullText", QString(), u"[A]='' and "_s, u"null"_s, u"null"_s}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(DatabaseStatements, AreNotRunBehindOneThatFailed)
{
    accessDriver.refusedStatement = u"DROP"_s;
    EXPECT_EQ(access.createTable(T, {field(F, 0, false)}), Velm::VelmSqlExecFailed);
    EXPECT_EQ(access.getLastErrorText(), u"refused"_s);
    EXPECT_EQ(accessDriver.takeStatements(), u"select * from T\nDROP TABLE T"_s);

    accessDriver.refusedStatement = u"select"_s;  // no table
    EXPECT_EQ(access.writeRecord(T, kOne), Velm::VelmTableNotExist);
    EXPECT_EQ(access.deleteRecord(T, kOne), Velm::VelmOk);
    EXPECT_EQ(accessDriver.takeStatements(), u"select * from T\nselect * from T"_s);

    accessDriver.refusedStatement = u"update"_s;
    accessDriver.column.setType(QVariant::Double);
    EXPECT_EQ(access.renameColumnName(T, u"N"_s, F), Velm::VelmSqlExecFailed);
    EXPECT_TRUE(accessDriver.takeStatements().endsWith(u"add column [列] REAL\nupdate T set 列=N"_s));
    EXPECT_EQ(sqliteDriver.takeStatements(), QString()) << "the other database was asked";
}
