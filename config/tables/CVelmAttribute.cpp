#include "CVelmAttribute.h"

#include "config/documents/FieldConversion.h"

using namespace velm::detail;

namespace {

VelmFieldItem converted(VelmFieldItem field, const FieldConversion* conversion)
{
    if (conversion)
        conversion->applyTo(field);
    return field;
}

VelmTableInfo converted(VelmTableInfo table, const FieldConversion* conversion)
{
    if (conversion)
        conversion->applyTo(table);
    return table;
}

}  // namespace

CVelmAttribute::CVelmAttribute() = default;

CVelmAttribute::CVelmAttribute(const CVelmAttribute& other) = default;

CVelmAttribute& CVelmAttribute::operator=(const CVelmAttribute& other) = default;

CVelmAttribute::~CVelmAttribute() = default;

const FieldConversion* CVelmAttribute::conversionOf(const QString& name,
                                                    const VelmAttParam& param) const
{
    return param.m_useConversion ? m_overlay.value(name.toUpper()).get() : nullptr;
}

QMap<QString, VelmTableItem> CVelmAttribute::getGisTableMap()
{
    return m_gisTables;
}

bool CVelmAttribute::existTable(const QString& name) const
{
    return m_gisTables.contains(name.toUpper());
}

Velm::ErrorStatus CVelmAttribute::getGisTableItem(const QString& name, VelmTableItem& item,
                                                  const VelmAttParam& param) const
{
    const auto it = m_gisTables.constFind(name.toUpper());
    if (it == m_gisTables.cend())
        return Velm::VelmNotFound;
    item = *it;
    if (const FieldConversion* conversion = conversionOf(name, param)) {
        conversion->applyTo(static_cast<VelmTableInfo&>(item));
        for (VelmFieldItem& field : item.fields)
            conversion->applyTo(field);
    }
    return Velm::VelmOk;
}

Velm::ErrorStatus CVelmAttribute::getGisTableInfo(const QString& name, VelmTableInfo& info,
                                                  const VelmAttParam& param) const
{
    const auto it = m_gisTables.constFind(name.toUpper());
    if (it == m_gisTables.cend())
        return Velm::VelmNotFound;
    info = converted(static_cast<const VelmTableInfo&>(*it), conversionOf(name, param));
    return Velm::VelmOk;
}

Velm::ErrorStatus CVelmAttribute::getGisTableFieldArray(const QString& name,
                                                        QList<VelmFieldItem>& fields,
                                                        const VelmAttParam& param) const
{
    VelmTableItem item;
    const Velm::ErrorStatus status = getGisTableItem(name, item, param);
    if (status == Velm::VelmOk)
        fields = item.fields;
    return status;
}

Velm::ErrorStatus CVelmAttribute::getGisTableFieldItem(const QString& table, const QString& field,
                                                       VelmFieldItem& item,
                                                       const VelmAttParam& param) const
{
    const auto it = m_gisTables.constFind(table.toUpper());
    if (it == m_gisTables.cend())
        return Velm::VelmNotFound;
    const FieldConversion* conversion = conversionOf(table, param);
    for (const VelmFieldItem& stored : it->fields) {
        const QString name = conversion ? conversion->nameOf(stored) : stored.m_fieldName;
        if (name.compare(field, Qt::CaseInsensitive) == 0) {
            item = converted(stored, conversion);
            return Velm::VelmOk;
        }
    }
    return Velm::VelmNotFound;
}

Velm::ErrorStatus CVelmAttribute::getGisFieldType(const QString& table, const QString& field,
                                                  int& type, const VelmAttParam& param) const
{
    VelmFieldItem item;
    const Velm::ErrorStatus status = getGisTableFieldItem(table, field, item, param);
    if (status == Velm::VelmOk)
        type = item.m_fieldType;
    return status;
}

Velm::ErrorStatus CVelmAttribute::getGisFieldPrecision(const QString& table, const QString& field,
                                                       int& decimals,
                                                       const VelmAttParam& param) const
{
    VelmFieldItem item;
    const Velm::ErrorStatus status = getGisTableFieldItem(table, field, item, param);
    if (status == Velm::VelmOk)
        decimals = item.m_fieldDecimal;
    return status;
}

QStringList CVelmAttribute::getGisTableNameArray(const VelmAttParam& param) const
{
    QStringList names;
    for (auto it = m_gisTables.cbegin(); it != m_gisTables.cend(); ++it)
        names.append(
            converted(static_cast<const VelmTableInfo&>(*it), conversionOf(it.key(), param))
                .tableName);
    return names;
}

QStringList CVelmAttribute::getGisTableNameByTableType(Velm::TableType type,
                                                       const VelmAttParam& param) const
{
    QStringList names;
    for (auto it = m_gisTables.cbegin(); it != m_gisTables.cend(); ++it) {
        if (it->_tableType == type)
            names.append(
                converted(static_cast<const VelmTableInfo&>(*it), conversionOf(it.key(), param))
                    .tableName);
    }
    return names;
}

QStringList CVelmAttribute::getGisFieldNameArray(const QString& table,
                                                 const VelmAttParam& param) const
{
    QStringList names;
    VelmTableItem item;
    getGisTableItem(table, item, param);
    for (const VelmFieldItem& field : qAsConst(item.fields))
        names.append(field.m_fieldName);
    return names;
}

QStringList CVelmAttribute::getGisFieldNameArrayByFieldType(const QString& table,
                                                            Velm::FieldType type,
                                                            const VelmAttParam& param) const
{
    QStringList names;
    VelmTableItem item;
    getGisTableItem(table, item, param);
    for (const VelmFieldItem& field : qAsConst(item.fields)) {
        if (field.m_fieldType == type)
            names.append(field.m_fieldName);
    }
    return names;
}
