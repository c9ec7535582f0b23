#include "CVelmReadGlobaldefinesTable.h"

#include "common/host/Singleton.h"
#include "CVelmString.h"
#include "data/values/GlobalDefine.h"

using namespace velm::detail;

CVelmReadGlobaldefinesTable* CVelmReadGlobaldefinesTable::Instance()
{
    static Singleton<CVelmReadGlobaldefinesTable> instance;
    return instance.get([] { return new CVelmReadGlobaldefinesTable; });
}

CVelmReadGlobaldefinesTable::CVelmReadGlobaldefinesTable() = default;

CVelmReadGlobaldefinesTable::~CVelmReadGlobaldefinesTable() = default;

bool CVelmReadGlobaldefinesTable::get_value(const QString& key, QString& value)
{
    const Velm::ErrorStatus status = readGlobalDefine(key, value);
    if (status == Velm::VelmTableNotExist)
        value.clear();
    return status == Velm::VelmOk && !value.isEmpty();
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
    const Velm::ErrorStatus status = readGlobalDefine(key, stored);
    if (status != Velm::VelmOk || (stored == value && !stored.isEmpty()))
        return status;  // what is there already takes no write lock
    return updateGlobalDefine(key, [&](const QString&) { return value; });
}

Velm::ErrorStatus CVelmReadGlobaldefinesTable::set_value(const QString& key,
                                                         const QMap<QString, QVariant>& map)
{
    const QString text = CVelmString().Variant2Json(map);
    return text.isEmpty() ? Velm::VelmInvalidValue : set_value(key, text);
}
