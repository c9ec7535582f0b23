#include "CVelmDatabase.h"

#include "support/Printers.h"
#include "support/Records.h"
#include "support/SqlRecorder.h"

#include <gtest/gtest.h>

#include <QDateTime>

namespace {

/// A database of each kind, of which only the statements are real.
class DatabaseStatements : public testing::Test
{
protected:
    DatabaseStatements()
    {
        EXPECT_EQ(sqlite.initDatabase(u"库.db"_s, QString()), Velm::VelmOk);
        EXPECT_EQ(access.initDatabase(u"库.mdb"_s, QString()), Velm::VelmOk);
        driver.take();
    }

    SqlRecorder driver;
    CVelmDatabase sqlite, access;
};

using Db = CVelmDatabase;

struct StatementCase
{
    const char* name;
    void (*call)(Db& db);
    /// Where "{exists}" is the question of each system whether T exists, "{real}" its type word.
    const char* statements;
};

class DatabaseStatement : public DatabaseStatements,
                          public testing::WithParamInterface<StatementCase>
{};

const QString T = u"T"_s, F = u"列"_s;
const Record kAll, kKey{{u"K"_s, 7}}, kTwo{{u"B"_s, u"x"_s}, {u"A"_s, 1}};
const QList<QPair<QString, Velm::DataBaseOrderByType>> kUnsorted,
    kSorted{{u"A"_s, Velm::OrderDescending}, {u"B"_s, Velm::OrderAscending}};

void createTable(Db& db)
{
    QList<VelmFieldItem> fields;
    for (const int type : {0, 1, 2, 3, 4, -1}) {
        VelmFieldItem field;
        field.m_fieldName = u"列%1"_s.arg(type);
        field.m_fieldType = static_cast<Velm::FieldType>(type);
        field.m_fieldMust = type % 2 == 0;
        field.m_fieldLength = 20;
        fields.append(field);
    }
    db.createTable(T, fields);
}

const std::vector<StatementCase> kStatements = {
    {"ExistTable", [](Db& db) { db.existTable(T); }, "{exists}"},
    {"CreateTable", createTable,
     "{exists}\nDROP TABLE T\nCreate Table T([列0] TEXT NOT NULL, [列1] INT, [列2] LONG NOT NULL, "
     "[列3] {real}, [列4] TEXT NOT NULL, [列-1] TEXT);"},
    {"ClearTables", [](Db& db) { db.clearTable(u"A;表"_s); }, "DELETE FROM A\nDELETE FROM 表"},
    {"ReadTable", [](Db& db) { db.readTable(T); }, "select * from T"},
    {"WriteRecord", [](Db& db) { db.writeRecord(T, kTwo); },
     "{exists}\ninsert into T ([A], [B]) values(1, 'x')"},
    {"WriteBlob", [](Db& db) { db.writeRecordBlob(T, kTwo); },
     "insert into T ([A],[B]) values (:A,:B)"},
    {"Update", [](Db& db) { db.updataRecord(T, kKey, kTwo); },
     "select count(*) from T where [A]=1 and [B]='x'\n"
     "update T set [K]=7 where [A]=1 and [B]='x'"},
    {"Delete", [](Db& db) { db.deleteRecord(T, kTwo); },
     "{exists}\ndelete from [T] where [A]=1 and [B]='x'"},
    {"DeleteAll", [](Db& db) { db.deleteRecord(T, kAll); }, "{exists}\ndelete from [T] "},
    {"First", [](Db& db) { db.readRecord(T, kTwo, true); },
     "select * from [T] where [A]=1 and [B]='x'"},
    {"FirstAnyCase", [](Db& db) { db.readRecord(T, kTwo, false); },
     "select * from [T] where [A]=1 and [B]='x' COLLATE NOCASE "},
    {"FirstField", [](Db& db) { db.readRecord(T, F, kKey, true); },
     "select [列] from [T] where [K]=7"},
    {"FirstFieldAnyCase", [](Db& db) { db.readRecord(T, F, kAll, false); },
     "select [列] from [T]  COLLATE NOCASE "},
    {"Field", [](Db& db) { db.readRecords(T, F, kAll, false, true); }, "select [列] from T"},
    {"DistinctField", [](Db& db) { db.readRecords(T, F, kKey, true, false); },
     "select distinct [列] from T where [K]=7 COLLATE NOCASE "},
    {"Fields", [](Db& db) { db.readFields(T, F, kKey); }, "select [列] from T where [K]=7"},
    {"Unsorted", [](Db& db) { db.readRecords(T, kAll, kUnsorted, true); }, "select * from [T] "},
    {"Sorted", [](Db& db) { db.readRecords(T, kKey, kSorted, false); },
     "select * from [T] where [K]=7 COLLATE NOCASE  order by A desc,B asc"},
    {"CountAll", [](Db& db) { db.recordCount(T, kAll); }, "select count(*) from T "},
    {"CountSome", [](Db& db) { db.recordCount(T, kKey); }, "select count(*) from T where [K]=7"},
    {"Schema", [](Db& db) { db.columnCount(T); }, "select * from [T]"},
    {"AddColumn", [](Db& db) { db.addColumnField(T, F, QVariant::LongLong, 20); },
     "alter table T add column [列] LONG"},
    {"DropColumn", [](Db& db) { db.delColumnField(T, F); }, "alter table T drop COLUMN '列'"},
    {"ChangeColumn", [](Db& db) { db.changeColumnType(T, F, QVariant::Int); },
     "alter table T alter column [T] INT"},
    {"CopyColumn", [](Db& db) { db.copyColumnValue(T, u"A"_s, F); }, "update T set 列=A"},
    {"RenameColumn", [](Db& db) { db.renameColumnName(T, u"N"_s, F); },
     "select * from [T]\nselect * from [T]\nalter table T add column [列] INT\n"
     "update T set 列=N\nalter table T drop COLUMN 'N'"},
};

}  // namespace

TEST_P(DatabaseStatement, IsTheSameOnBothSystemsButForTablesAndReals)
{
    const auto expected = [](const char* exists, const char* real) {
        return QString::fromUtf8(GetParam().statements)
            .replace(u"{exists}"_s, QLatin1String(exists))
            .replace(u"{real}"_s, QLatin1String(real));
    };
    GetParam().call(sqlite);
    EXPECT_EQ(
        driver.take(),
        expected("select count(*) from sqlite_master where type = 'table' and name = 'T'", "REAL"));
    GetParam().call(access);
    EXPECT_EQ(driver.take(), expected("select * from T", "NUMERIC"));
}
INSTANTIATE_TEST_SUITE_P(Operations, DatabaseStatement, testing::ValuesIn(kStatements),
                         [](const auto& info) { return std::string(info.param.name); });

namespace {

struct ValueCase
{
    const char* name;
    QVariant value;
    const char* condition;  ///< the term before "[B]=1"
    const char* sqlite;     ///< the value in an insert
    const char* access;     ///< null: the same
};

class DatabaseValue : public DatabaseStatements, public testing::WithParamInterface<ValueCase>
{};

const QDateTime kNoon(QDate(2024, 2, 29), QTime(12, 0));

}  // namespace

TEST_P(DatabaseValue, IsWrittenByItsType)
{
    const ValueCase& c = GetParam();
    sqlite.readFields(T, F, {{u"A"_s, c.value}, {u"B"_s, 1}});
    EXPECT_EQ(driver.take(),
              u"select [列] from T where "_s + QString::fromUtf8(c.condition) + u"[B]=1"_s);
    const auto insert = [&](const char* text) {
        return u"insert into T ([A]) values("_s + QString::fromUtf8(text) + u')';
    };
    QString sql;
    EXPECT_EQ(sqlite.getInsertSql(sql, T, {{u"A"_s, c.value}}), Velm::VelmOk);
    EXPECT_EQ(sql, insert(c.sqlite));
    EXPECT_EQ(access.getInsertSql(sql, T, {{u"A"_s, c.value}}), Velm::VelmOk);
    EXPECT_EQ(sql, insert(c.access != nullptr ? c.access : c.sqlite));
}
INSTANTIATE_TEST_SUITE_P(
    Values, DatabaseValue,
    testing::Values(
        ValueCase{"Bool", true, "[A]=1 and ", "1", nullptr},
        ValueCase{"Int", -5, "[A]=-5 and ", "-5", nullptr},
        ValueCase{"UInt", 4294967295U, "[A]=4294967295 and ", "4294967295", nullptr},
        ValueCase{"LongLong", Q_INT64_C(-9007199254740993), "[A]=-9007199254740993 and ",
                  "-9007199254740993", nullptr},
        ValueCase{"ULongLong", ~Q_UINT64_C(0), "[A]= and ", "18446744073709551615", nullptr},
        ValueCase{"Double", 0.1 + 0.2, "[A]=0.30000000000000004 and ", "0.30000000000000004",
                  nullptr},
        ValueCase{"Float", 0.5F, "[A]=0.5 and ", "0.5", nullptr},
        ValueCase{"Char", QChar(u'K'), "[A]=K and ", "'K'", nullptr},
        ValueCase{"Text", u"%1[B]%2 O'N"_s, "[A]='%1[B]%2 O'N' and ", "'%1[B]%2 O'N'", nullptr},
        ValueCase{"Date", kNoon.date(), "[A]= and ", "'2024-02-29'", "#2024-02-29#"},
        ValueCase{"Time", kNoon.time(), "[A]= and ", "'12:00:00'", "#12:00:00#"},
        ValueCase{"DateTime", kNoon, "[A]= and ", "'2024-02-29T12:00:00'", "#2024-02-29 12:00:00#"},
        ValueCase{"Fraction", kNoon.addMSecs(1250), "[A]= and ", "'2024-02-29T12:00:01.250'",
                  "#2024-02-29 12:00:01#"},
        ValueCase{"Invalid", QVariant(), "", "null", nullptr},
        ValueCase{"NullInt", QVariant(QVariant::Int), "", "null", nullptr},
        ValueCase{"NullText", QString(), "[A]='' and ", "null", nullptr}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(DatabaseStatements, AreNotRunBehindOneThatFailed)
{
    driver.refused = QStringList{u"DROP"_s};
    EXPECT_EQ(access.createTable(T, {}), Velm::VelmSqlExecFailed);
    EXPECT_EQ(access.getLastErrorText(), u"refused"_s);
    EXPECT_EQ(driver.take(), u"select * from T\nDROP TABLE T"_s);

    driver.refused = QStringList{u"select"_s};  // no table
    EXPECT_EQ(access.writeRecord(T, kTwo), Velm::VelmTableNotExist);
    EXPECT_EQ(access.deleteRecord(T, kTwo), Velm::VelmOk);
    EXPECT_EQ(driver.take(), u"select * from T\nselect * from T"_s);
}
