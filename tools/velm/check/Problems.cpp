#include "check/Problems.h"

#include "cli/Suggestions.h"

#include <QCryptographicHash>
#include <QRegularExpression>

#include <algorithm>
#include <tuple>

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

/// A message without what an edit elsewhere changes: the numbers of rows that it names, how many
/// more there are, and what may be meant.
QString withoutCounts(const QString& message)
{
    static const QRegularExpression counts(
        QStringLiteral("(?:row|line) [0-9]+|, and so (?:does|do) [0-9]+ more [a-z]+|; did you mean "
                       "\".*$"),
        QRegularExpression::DotMatchesEverythingOption);
    const bool mayHave = message.contains(QLatin1String("row "))
                         || message.contains(QLatin1String("line "))
                         || message.contains(QLatin1String(" more "))
                         || message.contains(QLatin1String("; did you mean "));
    return mayHave ? QString(message).remove(counts) : message;
}

bool isOfOneValue(const Place& a, const Place& b)
{
    return a.row == b.row && a.column == b.column && a.key == b.key && a.table == b.table
           && a.database == b.database && a.value == b.value;
}

/// Below 0, 0 or above, as @p a comes before @p b, is the same or comes behind.
int order(const QString& a, const QString& b)
{
    const int folded = a.compare(b, Qt::CaseInsensitive);
    return folded != 0 ? folded : a.compare(b);
}

bool comesBefore(const Problem& a, const Problem& b)
{
    if (const int databases = order(a.place.database, b.place.database))
        return databases < 0;
    if (const int tables = order(a.place.table, b.place.table))
        return tables < 0;
    const auto rest = [](const Problem& problem) {
        const Place& place = problem.place;
        return std::tie(place.row, place.key, place.column, problem.rule, place.value,
                        problem.message);
    };
    return rest(a) < rest(b);
}

/// Where rows have no number, rows of one key may be told apart by their values only.
bool isSame(const Problem& a, const Problem& b)
{
    return a.rule == b.rule && isOfOneValue(a.place, b.place) && a.message == b.message;
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
                place.column, excerpt(place.value), withoutCounts(message)}));
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

TooManyProblems::TooManyProblems()
    : std::length_error("there are more than 2,000,000 findings; --rule and --ignore look for less")
{}

const QString& Problems::shared(const QString& text)
{
    return *m_texts.insert(text);
}

void Problems::add(const Rule& rule, const Place& place, const QString& message)
{
    constexpr int kMost = 2000000;
    constexpr int kShort = 16;  // such values repeat; longer ones mostly share what a cell holds
    const QString id = QLatin1String(rule.id);
    if (!m_ids.contains(id))
        return;
    if (m_problems.isEmpty() || !isOfOneValue(m_problems.last().place, place))
        m_ofOnePlace.clear();
    const int before = m_ofOnePlace.size();
    m_ofOnePlace.insert(id + message);  // a value of megabytes may have one thing very often
    if (m_ofOnePlace.size() == before)
        return;
    if (m_problems.size() == kMost)
        throw TooManyProblems();
    m_problems.append({&rule, place, shared(message)});
    Place& kept = m_problems.last().place;
    kept.key = shared(place.key);
    if (place.value.size() <= kShort)
        kept.value = shared(place.value);
}

void Problems::addOnce(const QString& thing, const Rule& rule, const Place& place,
                       const QString& message)
{
    if (!m_ids.contains(QLatin1String(rule.id)) || m_told.contains(thing))
        return;
    m_told.insert(thing);
    add(rule, place, message);
}

QString Problems::suggestionAmong(const Rule& rule, const QString& text,
                                  const QStringList& candidates)
{
    constexpr int kMost = 20;
    const bool isTold = m_asked < kMost && m_ids.contains(QLatin1String(rule.id));
    m_asked += isTold ? 1 : 0;
    return isTold ? ::suggestionAmong(text, candidates) : QString();
}

const QVector<Problem>& Problems::all()
{
    std::sort(m_problems.begin(), m_problems.end(), comesBefore);
    const auto end = std::unique(m_problems.begin(), m_problems.end(), isSame);
    m_problems.erase(end, m_problems.end());
    return m_problems;
}
