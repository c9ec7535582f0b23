#include "smarttable/sheet/SheetNames.h"

#include <algorithm>

namespace SmartTable::detail {

QString sheetNameProblem(const QString& name)
{
    constexpr int kLongest = 31;
    const QString forbidden = QStringLiteral("[]:*?/\\");
    if (name.isEmpty() || name.size() > kLongest)
        return QStringLiteral("the name of a sheet has 1 to %1 characters").arg(kLongest);
    if (std::any_of(name.begin(), name.end(),
                    [&](QChar ch) { return forbidden.contains(ch) || ch.unicode() < 0x20; }))
        return QStringLiteral("the name of a sheet has none of ") + forbidden;
    if (name.startsWith(QLatin1Char('\'')) || name.endsWith(QLatin1Char('\'')))
        return QStringLiteral("the name of a sheet does not begin or end with '");
    if (name.compare(QLatin1String("History"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("\"History\" is a sheet of the spreadsheet program");
    return QString();
}

}  // namespace SmartTable::detail
