#pragma once

#include "check/CheckedTable.h"
#include "check/Rule.h"

#include <QSet>
#include <QString>
#include <QVector>

#include <array>
#include <stdexcept>

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

/// There are more findings than are kept; what() tells it.
class TooManyProblems : public std::length_error
{
public:
    TooManyProblems();
};

/// Collects what the rules find, each thing once.
class Problems
{
public:
    /// Keeps the rules of these ids only.
    explicit Problems(const QSet<QString>& ids) : m_ids(ids) {}

    /// Throws TooManyProblems beyond 2,000,000.
    void add(const Rule& rule, const Place& place, const QString& message);

    /// The same for what several subjects may find: of one @p thing the first finding counts.
    void addOnce(const QString& thing, const Rule& rule, const Place& place,
                 const QString& message);
    /// "; did you mean ...?" for a finding of a rule, or nothing. Only the first 20 that ask in a
    /// run are answered, since each answer looks at all candidates.
    QString suggestionAmong(const Rule& rule, const QString& text, const QStringList& candidates);

    /// By database, table and row; the problems of a row by column, rule, value and cause.
    const QVector<Problem>& all();

private:
    const QString& shared(const QString& text);

    QSet<QString> m_ids;
    QVector<Problem> m_problems;
    QSet<QString> m_texts;       // keys and what else repeats, which is kept once
    QSet<QString> m_told;        // by addOnce()
    int m_asked = 0;             // for suggestions
    QSet<QString> m_ofOnePlace;  // rules and causes at the place of the last problem
};
