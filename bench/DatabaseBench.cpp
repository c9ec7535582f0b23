#include "ConfigFixture.h"

#include "CVelmDatabase.h"

#include <benchmark/benchmark.h>

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>

namespace {

void ReadTable_Library(benchmark::State& state)
{
    CVelmDatabase database;
    database.initDatabase(configFile(), QString());
    for (auto _ : state)
        benchmark::DoNotOptimize(database.readTable(QStringLiteral("indexini")).size());
}
BENCHMARK(ReadTable_Library)->Unit(benchmark::kMillisecond);

/// The peer: the same maps built by hand over a forward-only query, each column name turned to
/// upper case once.
void ReadTable_HandWrittenQuery(benchmark::State& state)
{
    CVelmDatabase database;
    database.initDatabase(configFile(), QString());
    for (auto _ : state) {
        QVector<QMap<QString, QVariant>> rows;
        QSqlQuery query(database.getQSqlDatabase());
        query.setForwardOnly(true);
        query.exec(QStringLiteral("select * from indexini"));
        const QSqlRecord record = query.record();
        QStringList names;
        for (int i = 0; i < record.count(); ++i)
            names.append(record.fieldName(i).toUpper());
        while (query.next()) {
            QMap<QString, QVariant> row;
            for (int i = 0; i < names.size(); ++i)
                row.insert(names.at(i), query.value(i));
            rows.append(row);
        }
        benchmark::DoNotOptimize(rows.size());
    }
}
BENCHMARK(ReadTable_HandWrittenQuery)->Unit(benchmark::kMillisecond);

}  // namespace
