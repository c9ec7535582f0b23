#pragma once

#include <QHash>
#include <QString>

class CheckedTable;

/// How most rows of the work definitions write each layer, by lower-case name; of two spellings
/// with as many rows the one that comes first.
QHash<QString, QString> usualLayerNames(const CheckedTable& work);
