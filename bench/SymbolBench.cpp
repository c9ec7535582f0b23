#include "ConfigFixture.h"
#include "RawSqlite.h"

#include "config/tables/AreaLines.h"
#include "config/tables/CVelmAttributeDB.h"
#include "CVelmAnnotate.h"
#include "CVelmAreaLine.h"
#include "CVelmConfigManager.h"
#include "CVelmDatabase.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <cstdlib>
#include <memory>

namespace {

constexpr int kTables = 500;
constexpr int kFields = 40;

std::unique_ptr<CVelmAttributeDB> loadGisTables(const CVelmDatabase& database)
{
    auto tables = std::make_unique<CVelmAttributeDB>();
    tables->load(database, CVelmDatabase());
    return tables;
}

void run(CVelmDatabase& database, const QString& sql)
{
    if (database.executeSql(sql) != Velm::VelmOk)
        std::abort();
}

/// A counter from 0 to @p count - 1 as the table n, in front of an insert.
QString counting(int count)
{
    return QStringLiteral(
               "with recursive n(i) as (select 0 union all select i + 1 from n where i < "
               "%1) ")
        .arg(count - 1);
}

/// Makes GIS tables T0, T1, ... with fields F0, F1, ...
void makeGisTables(CVelmDatabase& database, int tables, int fields)
{
    run(database,
        QStringLiteral("create table Attributetable ([TABLE] TEXT, TEXT TEXT, GISTABLE TEXT, "
                       "TYPE INT)"));
    run(database, counting(tables)
                      + QStringLiteral("insert into Attributetable select 'T' || i, '表' || i, "
                                       "'G' || i, i % 3 from n"));
    run(database,
        QStringLiteral("create table Attributefield ([TABLE] TEXT, NAME TEXT, TEXT TEXT, TYPE "
                       "INT, LENGTH INT, DECIMAL INT, [DEFAULT] TEXT, [NOTNULL] INT, BEXPORT INT,"
                       " ENABLEEDIT INT)"));
    run(database,
        counting(tables * fields)
            + QStringLiteral("insert into Attributefield select 'T' || (i / %1), 'F' || "
                             "(i % %1), '字段' || i, i % 4, 20, 2, 'd' || i, 1, 1, 1 from n")
                  .arg(fields));
}

/// A database with area lines and GIS tables.
const QString& symbolFile()
{
    static const QTemporaryDir folder;
    static const QString path = [] {
        const QString file = folder.filePath(QStringLiteral("symbols.db"));
        CVelmDatabase database;
        database.initDatabase(file, QString());
        run(database,
            QStringLiteral("create table QuobAreaLine (CODE TEXT, LINEWIDTH REAL, ENTTYPE "
                           "TEXT, ANNRULE TEXT, AREARULE TEXT, GROUPNAME TEXT, "
                           "LINETYPESCALE REAL, HATCHCOLOR INT, HATCHBKCOLOR INT)"));
        run(database,
            counting(kCodeCount)
                + QStringLiteral("insert into QuobAreaLine select 100000 + i, 0.15, '1', "
                                 "'rule' || i, 'area', '组' || (i % 9), 1.5, i % 256, 7 from "
                                 "n"));
        makeGisTables(database, kTables, kFields);
        return file;
    }();
    return path;
}

void LoadSymbols_Library(benchmark::State& state)
{
    CVelmDatabase database;
    for (auto _ : state) {
        database.initDatabase(symbolFile(), QString());
        QMap<QString, VelmAreaLineItem> areas;
        velm::detail::loadAreaLines(database, areas);
        benchmark::DoNotOptimize(areas.size());
        benchmark::DoNotOptimize(loadGisTables(database));
    }
}
BENCHMARK(LoadSymbols_Library)->Unit(benchmark::kMillisecond);

/// The peer: loops over forward-only queries, written by hand, into the same maps.
void LoadSymbols_HandWrittenQuery(benchmark::State& state)
{
    CVelmDatabase database;
    database.initDatabase(symbolFile(), QString());
    for (auto _ : state) {
        QMap<QString, VelmAreaLineItem> areas;
        QMap<QString, VelmTableItem> tables;
        QSqlQuery query(database.getQSqlDatabase());
        query.setForwardOnly(true);
        query.exec(QStringLiteral("select CODE, LINEWIDTH, ENTTYPE, ANNRULE, AREARULE, GROUPNAME, "
                                  "LINETYPESCALE, HATCHCOLOR, HATCHBKCOLOR from QuobAreaLine"));
        while (query.next()) {
            VelmAreaLineItem item;
            item.code = query.value(0).toString();
            item.linewidth = query.value(1).toDouble();
            item.enttype = query.value(2).toString();
            item.annrule = query.value(3).toString();
            item.arearule = query.value(4).toString();
            item.groupname = query.value(5).toString();
            item.linetypescale = query.value(6).toDouble();
            item.hatchcolor = query.value(7).toInt();
            item.hatchbkcolor = query.value(8).toInt();
            areas.insert(item.code, item);
        }
        query.exec(QStringLiteral("select [TABLE], TEXT, GISTABLE, TYPE from Attributetable"));
        while (query.next()) {
            VelmTableItem item;
            item.tableName = query.value(0).toString();
            item.tableText = query.value(1).toString();
            item.gisTable = query.value(2).toString();
            item._tableType = static_cast<Velm::TableType>(query.value(3).toInt());
            tables.insert(item.tableName.toUpper(), item);
        }
        query.exec(QStringLiteral("select [TABLE], NAME, TEXT, TYPE, LENGTH, DECIMAL, [DEFAULT], "
                                  "[NOTNULL], BEXPORT, ENABLEEDIT from Attributefield"));
        while (query.next()) {
            VelmFieldItem field;
            field.m_tableName = query.value(0).toString();
            field.m_fieldName = query.value(1).toString();
            field.m_fieldText = query.value(2).toString();
            field.m_fieldType = static_cast<Velm::FieldType>(query.value(3).toInt());
            field.m_fieldLength = query.value(4).toInt();
            field.m_fieldDecimal = query.value(5).toInt();
            field.m_defaultValue = query.value(6).toString();
            field.m_fieldMust = query.value(7).toInt() != 0;
            field.m_fieldExport = query.value(8).toInt() != 0;
            field.m_fieldEdit = query.value(9).toInt() != 0;
            const auto owner = tables.find(field.m_tableName.toUpper());
            if (owner != tables.end())
                owner->fields.append(field);
        }
        benchmark::DoNotOptimize(areas.size() + tables.size());
    }
}
BENCHMARK(LoadSymbols_HandWrittenQuery)->Unit(benchmark::kMillisecond);

/// The floor: the same maps with the C interface of SQLite.
void LoadSymbols_RawSqlite(benchmark::State& state)
{
    sqlite3* database = nullptr;
    sqlite3_open(symbolFile().toUtf8().constData(), &database);
    const auto forEachRow = [database](const char* sql, const auto& use) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database, sql, -1, &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW)
            use(statement);
        sqlite3_finalize(statement);
    };
    for (auto _ : state) {
        QMap<QString, VelmAreaLineItem> areas;
        QMap<QString, VelmTableItem> tables;
        forEachRow("select CODE, LINEWIDTH, ENTTYPE, ANNRULE, AREARULE, GROUPNAME, LINETYPESCALE, "
                   "HATCHCOLOR, HATCHBKCOLOR from QuobAreaLine",
                   [&areas](sqlite3_stmt* row) {
                       VelmAreaLineItem item;
                       item.code = columnText(row, 0);
                       item.linewidth = sqlite3_column_double(row, 1);
                       item.enttype = columnText(row, 2);
                       item.annrule = columnText(row, 3);
                       item.arearule = columnText(row, 4);
                       item.groupname = columnText(row, 5);
                       item.linetypescale = sqlite3_column_double(row, 6);
                       item.hatchcolor = sqlite3_column_int(row, 7);
                       item.hatchbkcolor = sqlite3_column_int(row, 8);
                       areas.insert(item.code, item);
                   });
        forEachRow("select [TABLE], TEXT, GISTABLE, TYPE from Attributetable",
                   [&tables](sqlite3_stmt* row) {
                       VelmTableItem item;
                       item.tableName = columnText(row, 0);
                       item.tableText = columnText(row, 1);
                       item.gisTable = columnText(row, 2);
                       item._tableType = static_cast<Velm::TableType>(sqlite3_column_int(row, 3));
                       tables.insert(item.tableName.toUpper(), item);
                   });
        forEachRow("select [TABLE], NAME, TEXT, TYPE, LENGTH, DECIMAL, [DEFAULT], [NOTNULL], "
                   "BEXPORT, ENABLEEDIT from Attributefield",
                   [&tables](sqlite3_stmt* row) {
                       VelmFieldItem field;
                       field.m_tableName = columnText(row, 0);
                       field.m_fieldName = columnText(row, 1);
                       field.m_fieldText = columnText(row, 2);
                       field.m_fieldType = static_cast<Velm::FieldType>(sqlite3_column_int(row, 3));
                       field.m_fieldLength = sqlite3_column_int(row, 4);
                       field.m_fieldDecimal = sqlite3_column_int(row, 5);
                       field.m_defaultValue = columnText(row, 6);
                       field.m_fieldMust = sqlite3_column_int(row, 7) != 0;
                       field.m_fieldExport = sqlite3_column_int(row, 8) != 0;
                       field.m_fieldEdit = sqlite3_column_int(row, 9) != 0;
                       const auto owner = tables.find(field.m_tableName.toUpper());
                       if (owner != tables.end())
                           owner->fields.append(field);
                   });
        benchmark::DoNotOptimize(areas.size() + tables.size());
    }
    sqlite3_close(database);
}
BENCHMARK(LoadSymbols_RawSqlite)->Unit(benchmark::kMillisecond);

/// 2,000 GIS tables of 60 fields.
CVelmAttribute& manyTables()
{
    static const std::unique_ptr<CVelmAttributeDB> attribute = [] {
        const QTemporaryDir folder;
        CVelmDatabase database;
        database.initDatabase(folder.filePath(QStringLiteral("tables.db")), QString());
        makeGisTables(database, 2000, 60);
        return loadGisTables(database);
    }();
    return *attribute;
}

void FindField_Library(benchmark::State& state)
{
    const CVelmAttribute& attribute = manyTables();
    VelmFieldItem field;
    int i = 0;
    for (auto _ : state) {
        const QString table = QStringLiteral("T%1").arg(i);
        if (attribute.getGisTableFieldItem(table, QStringLiteral("F59"), field, VelmAttParam())
            != Velm::VelmOk)
            std::abort();
        i = (i + 7) % 2000;
    }
}
BENCHMARK(FindField_Library)->Unit(benchmark::kMicrosecond);

/// The peer: the same search in a bare map.
void FindField_BareMap(benchmark::State& state)
{
    const QMap<QString, VelmTableItem> tables = manyTables().getGisTableMap();
    VelmFieldItem found;
    int i = 0;
    for (auto _ : state) {
        const auto table = tables.constFind(QStringLiteral("T%1").arg(i).toUpper());
        for (const VelmFieldItem& field : table->fields) {
            if (field.m_fieldName.compare(QLatin1String("F59"), Qt::CaseInsensitive) == 0) {
                found = field;
                break;
            }
        }
        benchmark::DoNotOptimize(found);
        i = (i + 7) % 2000;
    }
}
BENCHMARK(FindField_BareMap)->Unit(benchmark::kMicrosecond);

/// A root whose "VelmAnnotate" has @p rows rows, with or without an index on CODE, among @p tables
/// tables. It is the library's root from now on. @return the path of its database
QString useAnnotations(int rows, bool indexed, int tables)
{
    static const QTemporaryDir folder;
    const QString root =
        folder.filePath(QStringLiteral("%1-%2-%3").arg(rows).arg(indexed).arg(tables));
    const QString file = root + QStringLiteral("/config/peltaconfig.db");
    if (!QFile::exists(file)) {
        QDir().mkpath(root + QStringLiteral("/config"));
        CVelmDatabase database;
        database.initDatabase(file, QString());
        run(database,
            QStringLiteral(
                "create table VelmAnnotate (CODE TEXT, FONT TEXT, PLACE TEXT, DECIMAL INT,"
                " TEXT TEXT, EXTDATA TEXT, HEIGHT REAL, ROTATE REAL, FACTOR REAL, "
                "LINETYPE REAL, INPUT INT, ANNTYPE INT, ENTTYPE INT)"));
        run(database,
            counting(rows)
                + QStringLiteral("insert into VelmAnnotate select 100000 + i, '宋体', 'MR', "
                                 "2, 'text' || i, '{\"a\":1}', 2, 0, 1, 1, 0, 1, 3 from n"));
        for (int i = 1; i < tables; ++i)
            run(database,
                QStringLiteral("create table TBL_%1 (CODE TEXT, VALUE TEXT, REMARK TEXT)").arg(i));
        if (indexed)
            run(database, QStringLiteral("create index IX on VelmAnnotate (CODE)"));
    }
    qputenv("VELM_ROOT", QFile::encodeName(root));
    return file;
}

void Annotation_Library(benchmark::State& state)
{
    const int rows = static_cast<int>(state.range(0));
    useAnnotations(rows, state.range(1) != 0, static_cast<int>(state.range(2)));
    CVelmAnnotate* annotate = CVelmConfigManager::Instance()->GetVelmAnnotate();
    VelmAnnItem item;
    int i = 0;
    for (auto _ : state) {
        if (annotate->getAnnotateItem(codeOf(i), item) != Velm::VelmOk)
            std::abort();
        i = (i + 7919) % rows;
    }
}

/// The floor: open, the same query, close, with the C interface of SQLite.
void Annotation_RawSqlite(benchmark::State& state)
{
    const int rows = static_cast<int>(state.range(0));
    const QByteArray file =
        useAnnotations(rows, state.range(1) != 0, static_cast<int>(state.range(2))).toUtf8();
    int i = 0;
    for (auto _ : state) {
        sqlite3* database = nullptr;
        sqlite3_stmt* statement = nullptr;
        sqlite3_open(file.constData(), &database);
        const QByteArray sql =
            "select * from VelmAnnotate where CODE = '" + codeOf(i).toUtf8() + "'";
        sqlite3_prepare_v2(database, sql.constData(), -1, &statement, nullptr);
        if (sqlite3_step(statement) != SQLITE_ROW)
            std::abort();
        for (int column = 0; column < sqlite3_column_count(statement); ++column)
            benchmark::DoNotOptimize(sqlite3_column_text16(statement, column));
        sqlite3_finalize(statement);
        sqlite3_close(database);
        i = (i + 7919) % rows;
    }
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"rows", "indexed", "tables"})->Unit(benchmark::kMicrosecond);
    for (const int rows : {1000, 100000}) {
        for (const int indexed : {0, 1}) {
            for (const int tables : {1, 44})
                benchmark->Args({rows, indexed, tables});
        }
    }
}
BENCHMARK(Annotation_Library)->Apply(sizes);
BENCHMARK(Annotation_RawSqlite)->Apply(sizes);

}  // namespace
