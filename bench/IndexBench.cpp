#include "ConfigFixture.h"
#include "RawSqlite.h"

#include "config/tables/CVelmIndexDB.h"
#include "config/tables/CVelmWorkDB.h"
#include "CVelmDatabase.h"

#include <benchmark/benchmark.h>

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

namespace {

/// The library's loaders.
void LoadCodes_Library(benchmark::State& state)
{
    CVelmDatabase database;
    for (auto _ : state) {
        database.initDatabase(configFile(), QString());
        CVelmIndexDB index;
        CVelmWorkDB work;
        index.load(database);
        work.initVelmWork(database);
        benchmark::DoNotOptimize(index.getIndexMap().size());
    }
}
BENCHMARK(LoadCodes_Library)->Unit(benchmark::kMillisecond);

/// The peer: loops over forward-only queries, written by hand, into the same maps of the same
/// records.
void LoadCodes_HandWrittenQuery(benchmark::State& state)
{
    CVelmDatabase database;
    database.initDatabase(configFile(), QString());
    for (auto _ : state) {
        QMap<QString, VelmIndexItem> index;
        QMap<QString, VelmWorkItem> work;
        QSqlQuery query(database.getQSqlDatabase());
        query.setForwardOnly(true);
        query.exec(
            QStringLiteral("select CODE, NAME, LTYPE, WIDTH, [TABLE], USECODE from indexini"));
        while (query.next()) {
            VelmIndexItem item;
            item.code = query.value(0).toString();
            item.name = query.value(1).toString();
            item.ltype = query.value(2).toString();
            item.width = query.value(3).toDouble();
            item.table = query.value(4).toString();
            item.usecode = query.value(5).toString();
            index.insert(item.code, item);
        }
        query.exec(
            QStringLiteral("select CODE, LAYER, ENTTYPE, PAR1, PAR2, TEXT, COLOR from Workdef"));
        while (query.next()) {
            VelmWorkItem item;
            item.code = query.value(0).toString();
            item.layer = query.value(1).toString();
            item.enttype = query.value(2).toInt();
            item.par1 = query.value(3).toString();
            item.par2 = query.value(4).toString();
            item.text = query.value(5).toString();
            item.color = query.value(6).toInt();
            work.insert(item.code, item);
        }
        benchmark::DoNotOptimize(index.size() + work.size());
    }
}
BENCHMARK(LoadCodes_HandWrittenQuery)->Unit(benchmark::kMillisecond);

/// The floor: the C interface of SQLite, without Qt's driver.
void LoadCodes_RawSqlite(benchmark::State& state)
{
    sqlite3* database = nullptr;
    sqlite3_open(configFile().toUtf8().constData(), &database);
    for (auto _ : state) {
        QMap<QString, VelmIndexItem> index;
        QMap<QString, VelmWorkItem> work;
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database,
                           "select CODE, NAME, LTYPE, WIDTH, [TABLE], USECODE from indexini", -1,
                           &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            VelmIndexItem item;
            item.code = columnText(statement, 0);
            item.name = columnText(statement, 1);
            item.ltype = columnText(statement, 2);
            item.width = sqlite3_column_double(statement, 3);
            item.table = columnText(statement, 4);
            item.usecode = columnText(statement, 5);
            index.insert(item.code, item);
        }
        sqlite3_finalize(statement);
        sqlite3_prepare_v2(database,
                           "select CODE, LAYER, ENTTYPE, PAR1, PAR2, TEXT, COLOR from Workdef", -1,
                           &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            VelmWorkItem item;
            item.code = columnText(statement, 0);
            item.layer = columnText(statement, 1);
            item.enttype = sqlite3_column_int(statement, 2);
            item.par1 = columnText(statement, 3);
            item.par2 = columnText(statement, 4);
            item.text = columnText(statement, 5);
            item.color = sqlite3_column_int(statement, 6);
            work.insert(item.code, item);
        }
        sqlite3_finalize(statement);
        benchmark::DoNotOptimize(index.size() + work.size());
    }
    sqlite3_close(database);
}
BENCHMARK(LoadCodes_RawSqlite)->Unit(benchmark::kMillisecond);

/// Codes in an order that jumps about, each its own text.
QStringList scatteredCodes()
{
    constexpr int kStride = 7919;  // a prime, so that every code comes once
    QStringList codes;
    for (int i = 0; i < 4096; ++i)
        codes.append(codeOf(int(qint64(i) * kStride % kCodeCount)));
    return codes;
}

const CVelmIndexDB& loadedIndex()
{
    static const CVelmIndexDB index = [] {
        CVelmDatabase database;
        database.initDatabase(configFile(), QString());
        CVelmIndexDB loaded;
        loaded.load(database);
        return loaded;
    }();
    return index;
}

void LookupName_Library(benchmark::State& state)
{
    const CVelmIndexDB& index = loadedIndex();
    const QStringList codes = scatteredCodes();
    QString name;
    int i = 0;
    for (auto _ : state) {
        index.getName(codes.at(i), name);
        benchmark::DoNotOptimize(name);
        i = (i + 1) % codes.size();
    }
}
BENCHMARK(LookupName_Library);

void LookupName_BareMap(benchmark::State& state)
{
    const QMap<QString, VelmIndexItem> map = loadedIndex().getIndexMap();
    const QStringList codes = scatteredCodes();
    QString name;
    int i = 0;
    for (auto _ : state) {
        const auto it = map.constFind(codes.at(i));
        if (it != map.cend())
            name = it->name;
        benchmark::DoNotOptimize(name);
        i = (i + 1) % codes.size();
    }
}
BENCHMARK(LookupName_BareMap);

}  // namespace
