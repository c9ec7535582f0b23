#include "check/Problems.h"

#include <QCryptographicHash>
#include <QRegularExpression>

namespace {

QByteArray digest(const QStringList& parts)
{
    const QByteArray text = parts.join(QChar::Null).toUtf8();
    return QCryptographicHash::hash(text, QCryptographicHash::Sha1);
}

}  // namespace

QString excerpt(const QString& value)
{
    constexpr int kLongest = 1000;
    return value.size() <= kLongest ? value : value.left(kLongest) + QStringLiteral("...");
}

QString Problem::fingerprint() const
{
    static const QRegularExpression rowNumber(
        QStringLiteral("(?:row|line) [0-9]+|, and so (?:does|do) [0-9]+ more [a-z]+"));
    return QString::fromLatin1(
        digest({QLatin1String(rule->id), place.database, place.table, excerpt(place.key),
                place.column, excerpt(place.value), QString(message).remove(rowNumber)})
            .toHex());
}

void Problems::add(const Rule& rule, const Place& place, const QString& message)
{
    if (!m_ids.contains(QLatin1String(rule.id)))
        return;
    // Where rows have no number, rows of one key may be told apart by their values only.
    const QByteArray known =
        digest({QLatin1String(rule.id), place.database, place.table, QString::number(place.row),
                place.row == 0 ? place.key : QString(), place.column,
                place.row == 0 ? place.value : QString(), message});
    if (m_known.contains(known))
        return;
    m_known.insert(known);
    m_problems.append({&rule, place, message});
}
