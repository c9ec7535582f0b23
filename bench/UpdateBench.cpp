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

namespace {

constexpr int kItems = 1000;

/// A root with 1,000 area lines, which is the library's from now on. @return its database
QString useAreaLines()
{
    static const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("config/peltaconfig.db"));
    qputenv("VELM_ROOT", QFile::encodeName(folder.path()));
    if (QFile::exists(file))
        return file;
    QDir().mkpath(folder.filePath(QStringLiteral("config")));
    CVelmDatabase database;
    database.initDatabase(file, QString());
    database.executeSql(QStringLiteral(
        "create table QuobAreaLine (CODE TEXT, LINEWIDTH REAL, ENTTYPE TEXT, ANNRULE "
        "TEXT, AREARULE TEXT, GROUPNAME TEXT, LINETYPESCALE REAL, HATCHCOLOR INT, "
        "HATCHBKCOLOR INT)"));
    database.executeSql(QStringLiteral(
        "with recursive n(i) as (select 0 union all select i + 1 from n where i < 999) insert into "
        "QuobAreaLine select 100000 + i, 0.15, '1', 'rule', 'area', 'group', 1.5, 1, 7 from n"));
    return file;
}

QVector<VelmAreaLineItem> items(int color)
{
    QVector<VelmAreaLineItem> items(kItems);
    for (int i = 0; i < kItems; ++i) {
        items[i].code = QString::number(100000 + i);
        items[i].annrule = QStringLiteral("rule");
        items[i].hatchcolor = color;
    }
    return items;
}

void UpdateAreaLines_Library(benchmark::State& state)
{
    useAreaLines();
    CVelmConfigManager::Instance()->flushVelmConfig();
    int color = 0;
    for (auto _ : state) {
        if (!CVelmConfigManager::Instance()->GetVelmAreaLine()->UpdateAreaLine(items(++color)))
            std::abort();
    }
}
BENCHMARK(UpdateAreaLines_Library)->Unit(benchmark::kMillisecond);

/// The peer: a count and an update for each item, in one transaction begun by hand.
void UpdateAreaLines_HandWritten(benchmark::State& state)
{
    CVelmDatabase database;
    database.initDatabase(useAreaLines(), QString());
    int color = 0;
    for (auto _ : state) {
        QSqlQuery query(database.getQSqlDatabase());
        query.exec(QStringLiteral("begin immediate"));
        for (const VelmAreaLineItem& item : items(++color)) {
            const QString where = QStringLiteral(" where [CODE]='%1'").arg(item.code);
            query.exec(QStringLiteral("select count(*) from QuobAreaLine") + where);
            if (!query.next() || query.value(0).toInt() != 1)
                std::abort();
            query.exec(QStringLiteral("update QuobAreaLine set [ANNRULE]='%1', [AREARULE]='', "
                                      "[CODE]='%2', [ENTTYPE]='', [GROUPNAME]='', "
                                      "[HATCHBKCOLOR]=0, [HATCHCOLOR]=%3, [LINETYPESCALE]=0, "
                                      "[LINEWIDTH]=0")
                           .arg(item.annrule, item.code)
                           .arg(item.hatchcolor)
                       + where);
        }
        query.exec(QStringLiteral("commit"));
    }
}
BENCHMARK(UpdateAreaLines_HandWritten)->Unit(benchmark::kMillisecond);

}  // namespace
