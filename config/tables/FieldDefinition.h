#pragma once

#include "VelmFieldItem.h"

#include <QString>

/// What the definitions of fields have in common, wherever they are read from.
namespace velm::detail {

/// Sets the type, and with it whether the field is shown.
inline void setFieldType(VelmFieldItem& field, int type)
{
    constexpr int kFirstHidden = 10;
    field.m_fieldType = static_cast<Velm::FieldType>(type);
    field.m_fieldShow = type < kFirstHidden;
}

/// Sets the dictionary if @p value names one, "TBL_..." in any letter case, else the default value.
inline void setDefaultOrDictionary(VelmFieldItem& field, const QString& value)
{
    if (value.startsWith(QLatin1String("TBL_"), Qt::CaseInsensitive))
        field.m_fieldDict = value;
    else
        field.m_defaultValue = value;
}

}  // namespace velm::detail
