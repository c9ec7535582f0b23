#include "check/LayerNames.h"

#include "check/CheckedTable.h"

QHash<QString, UsualName> usualLayerNames(const CheckedTable& work)
{
    const QString column = QStringLiteral("LAYER");
    QHash<QString, int> counts;  // by spelling
    QStringList spellings;       // in the order of the rows
    for (int row = 0; work.has(column) && row < work.size(); ++row) {
        const QString layer = work.text(row, column).trimmed();
        if (++counts[layer] == 1)
            spellings.append(layer);
    }
    QHash<QString, UsualName> usual;
    for (const QString& layer : qAsConst(spellings)) {
        UsualName& known = usual[layer.toLower()];
        const int ahead = counts.value(layer) - counts.value(known.name);
        if (known.name.isNull() || ahead > 0)
            known = {layer, false};
        else if (ahead == 0)
            known.isTied = true;
    }
    return usual;
}
