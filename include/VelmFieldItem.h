#pragma once

#include "VelmTypes.h"

#include <QString>

/// One field of a database or attribute table.
struct VelmFieldItem
{
    Velm::FieldType m_fieldType = Velm::FieldText;  ///< type of the values
    bool m_fieldMust = false;    ///< must be filled; "NOT NULL" when a table is created
    bool m_fieldEdit = true;     ///< may be edited by the user
    int m_fieldLength = 0;       ///< greatest number of characters or digits; 0 is unlimited
    int m_fieldDecimal = 0;      ///< digits behind the point
    QString m_fieldName;         ///< column name
    QString m_fieldText;         ///< display text
    bool m_fieldShow = true;     ///< shown to the user
    QString m_tableName;         ///< table that owns the field
    QString m_fieldDict;         ///< dictionary of the permitted values; empty when free
    QString m_defaultValue;      ///< as text; empty for none
    bool m_fieldExport = false;  ///< written to exports
};
