#include "check/LayerNames.h"

#include "check/CheckedTable.h"

QHash<QString, QString> usualLayerNames(const CheckedTable& work)
{
    const QString column = QStringLiteral("LAYER");
    QHash<QString, int> counts;  // by spelling
    for (int row = 0; work.has(column) && row < work.size(); ++row)
        ++counts[work.text(row, column).trimmed()];
    QHash<QString, QString> usual;
    for (int row = 0; work.has(column) && row < work.size(); ++row) {
        const QString layer = work.text(row, column).trimmed();
        QString& known = usual[layer.toLower()];
        if (known.isEmpty() || counts.value(layer) > counts.value(known))
            known = layer;
    }
    return usual;
}
