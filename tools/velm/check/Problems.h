#pragma once

#include "check/CheckedTable.h"
#include "check/Rule.h"

#include <QSet>
#include <QString>
#include <QVector>

#include <array>

using Fingerprint = std::array<char, 20>;

struct Problem
{
    const Rule* rule;
    Place place;
    QString message;

    /// Stays the same when rows are added, moved or changed elsewhere: for baselines and code
    /// scanning services.
    Fingerprint fingerprint() const;
};

/// In hexadecimal digits.
QByteArray textOf(const Fingerprint& fingerprint);
/// The other way round; zeros for what is none.
Fingerprint fingerprintOf(const QByteArray& text);

/// A value, shortened to what tells it from others: one of megabytes may have a finding for each
/// of its parts.
QString excerpt(const QString& value);

/// Collects what the rules find, each thing once.
class Problems
{
public:
    /// Keeps the rules of these ids only.
    explicit Problems(const QSet<QString>& ids) : m_ids(ids) {}

    void add(const Rule& rule, const Place& place, const QString& message);

    const QVector<Problem>& all() const { return m_problems; }

private:
    QSet<QString> m_ids;
    QVector<Problem> m_problems;
    QSet<QByteArray> m_known;  // rule, place and cause
};
