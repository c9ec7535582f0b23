#include "data/values/GlobalDefine.h"

#include "common/host/HostCalls.h"
#include "CVelmDatabase.h"
#include "data/access/ConfigDatabase.h"
#include "data/access/SystemConfig.h"
#include "data/sql/WriteTransaction.h"

namespace velm::detail {

namespace {

QString keyColumn()
{
    return QStringLiteral("key");
}

QString valueColumn()
{
    return QStringLiteral("value");
}

QString tableName()
{
    return QStringLiteral("globaldefines");
}

QString valueOf(const Record& row)
{
    return row.value(valueColumn().toUpper()).toString();
}

}  // namespace

Velm::ErrorStatus readGlobalDefine(const QString& key, QString& value)
{
    CVelmDatabase database;
    QString table = tableName();
    Record row;
    Velm::ErrorStatus status = openSystemConfig(database);
    if (status == Velm::VelmOk)
        status = storedTable(database, table);
    if (status == Velm::VelmOk)
        status = readConfigRow(database, table, {{keyColumn(), key}}, row).status;
    if (status == Velm::VelmOk)
        value = valueOf(row);
    return status;
}

Velm::ErrorStatus updateGlobalDefine(const QString& key, const MergeValue& merge)
{
    CVelmDatabase database;
    QString table = tableName();
    Velm::ErrorStatus status = openForWriting(database);
    if (status == Velm::VelmOk)
        status = storedTable(database, table);
    if (status != Velm::VelmOk)
        return status;
    const HostCallsLater untilCommitted;
    WriteTransaction transaction(database.getQSqlDatabase());
    if (transaction.error().isValid())
        return keepResult(transaction.error());
    const Record where = withoutNullTexts({{keyColumn(), key}});
    Record row;
    status = readConfigRow(database, table, where, row).status;
    if (status != Velm::VelmOk)
        return status;
    const std::optional<QString> merged = merge(valueOf(row));
    if (!merged)
        return Velm::VelmOk;
    Record values = withoutNullTexts({{valueColumn(), *merged}});
    if (row.isEmpty()) {
        values.insert(keyColumn(), where.value(keyColumn()));
        status = database.writeRecord(table, values);
    } else {
        status = database.updataRecord(table, values, where);
    }
    return status == Velm::VelmOk ? keepResult(transaction.commit()) : status;
}

}  // namespace velm::detail
