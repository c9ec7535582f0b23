#include "CVelmReadGlobaldefinesTable.h"

#include "common/Singleton.h"
#include "config/SystemConfig.h"
#include "CVelmDatabase.h"
#include "CVelmString.h"

namespace {

QString table()
{
    return QStringLiteral("globaldefines");
}

QString valueColumn()
{
    return QStringLiteral("value");
}

QMap<QString, QVariant> whereKeyIs(const QString& key)
{
    return {{QStringLiteral("key"), key}};
}

}  // namespace

CVelmReadGlobaldefinesTable* CVelmReadGlobaldefinesTable::Instance()
{
    static velm::detail::Singleton<CVelmReadGlobaldefinesTable> instance;
    return instance.get([] { return new CVelmReadGlobaldefinesTable; });
}

CVelmReadGlobaldefinesTable::CVelmReadGlobaldefinesTable() = default;

CVelmReadGlobaldefinesTable::~CVelmReadGlobaldefinesTable() = default;

bool CVelmReadGlobaldefinesTable::get_value(const QString& key, QString& value)
{
    CVelmDatabase database;
    if (velm::detail::openSystemConfig(database) != Velm::VelmOk)
        return false;
    value = database.readRecord(table(), valueColumn(), whereKeyIs(key), true).toString();
    return !value.isEmpty();
}

bool CVelmReadGlobaldefinesTable::get_value(QMap<QString, QVariant>& map, const QString& key)
{
    QString text;
    if (!get_value(key, text))
        return false;
    map = CVelmString().Json2Variant(text).toMap();
    return !map.isEmpty();
}

Velm::ErrorStatus CVelmReadGlobaldefinesTable::set_value(const QString& key, const QString& value)
{
    QString stored;
    if (get_value(key, stored) && stored == value)
        return Velm::VelmOk;
    CVelmDatabase database;
    const Velm::ErrorStatus opened = velm::detail::openSystemConfig(database);
    if (opened != Velm::VelmOk)
        return opened;
    const QMap<QString, QVariant> row = {{valueColumn(), value}};
    const bool isNew = database.readRecord(table(), whereKeyIs(key), true).isEmpty();
    if (!database.getLastErrorText().isEmpty())
        return Velm::VelmSqlExecFailed;
    if (isNew)
        return database.writeRecord(table(),
                                    {{QStringLiteral("key"), key}, {valueColumn(), value}});
    return database.updataRecord(table(), row, whereKeyIs(key));
}

Velm::ErrorStatus CVelmReadGlobaldefinesTable::set_value(const QString& key,
                                                         const QMap<QString, QVariant>& map)
{
    const QString text = CVelmString().Variant2Json(map);
    return text.isEmpty() ? Velm::VelmInvalidValue : set_value(key, text);
}
