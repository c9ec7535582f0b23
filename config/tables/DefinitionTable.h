#pragma once

#include "VelmTypes.h"

#include <QMap>
#include <QString>
#include <QVariant>

/// What the tables that hold one item for each feature code have in common.
namespace velm::detail {

/// Copies one member of the item with that code. @return VelmOk; VelmNotFound
template<class Item, class Value>
Velm::ErrorStatus getField(const QMap<QString, Item>& items, const QString& code,
                           Value Item::*member, Value& output)
{
    const auto it = items.constFind(code);
    if (it == items.cend())
        return Velm::VelmNotFound;
    output = (*it).*member;
    return Velm::VelmOk;
}

/// The condition under which a row of a definition table belongs to a code.
inline QMap<QString, QVariant> ofCode(const QString& code)
{
    return {{QStringLiteral("code"), code}};
}

/// What is written of an item beside its code.
inline QMap<QString, QVariant> withoutCode(QMap<QString, QVariant> values)
{
    values.remove(QStringLiteral("code"));
    return values;
}

}  // namespace velm::detail
