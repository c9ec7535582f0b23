#pragma once

#include <QString>

#include <algorithm>

namespace velm::detail {

/// Whether a table of that name is meant as a dictionary.
inline bool namesDictionary(const QString& table)
{
    return table.startsWith(QLatin1String("TBL_"), Qt::CaseInsensitive)
           || table.startsWith(QLatin1String("TB_"), Qt::CaseInsensitive);
}

/// Whether @p name is an identifier of SQLite, to which every character beyond ASCII is a letter:
/// only such a name may stand in a statement as it is.
inline bool isIdentifier(const QString& name)
{
    return std::all_of(name.begin(), name.end(), [](QChar ch) {
        return ch.unicode() >= 0x80 || ch.isLetterOrNumber() || ch == QLatin1Char('_')
               || ch == QLatin1Char('$');
    });
}

}  // namespace velm::detail
