#pragma once

#include <QHash>
#include <QString>

class CheckedTable;

struct UsualName
{
    QString name;
    bool isTied = false;  ///< whether as many rows have another spelling
};

/// How most rows of the work definitions write each layer, by lower-case name; of spellings with as
/// many rows the one that comes first.
QHash<QString, UsualName> usualLayerNames(const CheckedTable& work);
