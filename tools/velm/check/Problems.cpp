#include "check/Problems.h"

#include <QCryptographicHash>
#include <QRegularExpression>

#include <algorithm>

namespace {

QByteArray digest(const QStringList& parts)
{
    const QByteArray text = parts.join(QChar::Null).toUtf8();
    return QCryptographicHash::hash(text, QCryptographicHash::Sha1);
}

Fingerprint toFingerprint(const QByteArray& bytes)
{
    Fingerprint fingerprint{};
    if (bytes.size() == static_cast<int>(fingerprint.size()))
        std::copy(bytes.begin(), bytes.end(), fingerprint.begin());
    return fingerprint;
}

/// A message without the number of the row that it names.
QString withoutRow(const QString& message)
{
    static const QRegularExpression rowNumber(QStringLiteral("row [0-9]+"));
    return message.contains(QLatin1String("row ")) ? QString(message).remove(rowNumber) : message;
}

}  // namespace

QString excerpt(const QString& value)
{
    constexpr int kLongest = 1000;
    return value.size() <= kLongest ? value : value.left(kLongest) + QStringLiteral("...");
}

Fingerprint Problem::fingerprint() const
{
    return toFingerprint(
        digest({QLatin1String(rule->id), place.database, place.table, excerpt(place.key),
                place.column, excerpt(place.value), withoutRow(message)}));
}

QByteArray textOf(const Fingerprint& fingerprint)
{
    return QByteArray::fromRawData(fingerprint.data(), static_cast<int>(fingerprint.size()))
        .toHex();
}

Fingerprint fingerprintOf(const QByteArray& text)
{
    return toFingerprint(QByteArray::fromHex(text));
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
