#include "cli/Suggestions.h"

#include <QPair>
#include <QVector>

#include <algorithm>

namespace {

constexpr int kGreatestDistance = 2;
constexpr int kMostSuggestions = 3;

constexpr int kLongestText = 64;  // nobody mistypes more

/// Rows of the table from which slips are counted.
struct Rows
{
    QVector<int> beforeLast, last, row;
};

/// The number of slips between two texts (restricted Damerau-Levenshtein distance, Damerau 1964).
int slipsBetween(const QString& a, const QString& b, Rows& rows)
{
    auto& [beforeLast, last, row] = rows;
    for (QVector<int>* each : {&beforeLast, &last, &row})
        each->resize(b.size() + 1);
    for (int j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (int i = 1; i <= a.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i;
        for (int j = 1; j <= b.size(); ++j) {
            const bool same = a.at(i - 1) == b.at(j - 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
            if (i > 1 && j > 1 && a.at(i - 1) == b.at(j - 2) && a.at(i - 2) == b.at(j - 1))
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
    }
    return row[b.size()];
}

}  // namespace

QStringList similarTo(const QString& text, const QStringList& candidates)
{
    QVector<QPair<int, QString>> alike;
    Rows rows;
    const QString lower = text.toLower();
    for (const QString& candidate : candidates) {
        if (text.size() > kLongestText || qAbs(candidate.size() - text.size()) > kGreatestDistance)
            continue;
        const int slips = slipsBetween(lower, candidate.toLower(), rows);
        if (slips <= kGreatestDistance && 2 * slips < text.size())
            alike.append({slips, candidate});
    }
    std::sort(alike.begin(), alike.end());
    QStringList suggestions;
    for (const auto& [slips, candidate] : alike.mid(0, kMostSuggestions)) {
        if (slips == 0 || alike.first().first > 0)  // the very name in other letters is meant
            suggestions.append(candidate);
    }
    return suggestions;
}

QString suggestionAmong(const QString& text, const QStringList& candidates)
{
    constexpr int kMostCandidates = 1000;
    return candidates.size() > kMostCandidates ? QString()
                                               : didYouMean(similarTo(text, candidates));
}

QString didYouMean(const QStringList& suggestions)
{
    if (suggestions.isEmpty())
        return QString();
    QString list;
    for (int i = 0; i < suggestions.size(); ++i) {
        if (i > 0)
            list += i + 1 == suggestions.size() ? QStringLiteral(" or ") : QStringLiteral(", ");
        list += QLatin1Char('"') + suggestions.at(i) + QLatin1Char('"');
    }
    return QStringLiteral("; did you mean ") + list + QLatin1Char('?');
}
