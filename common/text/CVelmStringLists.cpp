#include "CVelmString.h"

#include "common/text/CheckedArithmetic.h"
#include "common/text/ChineseNumber.h"
#include "common/text/OrEmpty.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace {

/// Calls @p use with each part of a split that leaves a separator at the start of a part alone. Of
/// every separator found elsewhere one character is removed, whatever its length.
template<class Use>
void forEachPart(const QString& text, const QString& separator, const Use& use)
{
    int begin = 0;  // of the part
    int from = 0;   // where the search goes on
    for (;;) {
        const int found = text.indexOf(separator, from);
        if (found < 0) {
            use(text.mid(begin));
            return;
        }
        if (found == begin) {
            from = begin + 2;
            continue;
        }
        use(text.mid(begin, found - begin));
        begin = from = found + 1;
    }
}

QStringList scanningSplit(const QString& text, const QString& separator)
{
    QStringList parts;
    forEachPart(text, separator, [&parts](const QString& part) { parts.append(part); });
    return parts;
}

/// |x - y| without overflow.
unsigned long distance(long x, long y)
{
    return x >= y ? static_cast<unsigned long>(x) - static_cast<unsigned long>(y)
                  : static_cast<unsigned long>(y) - static_cast<unsigned long>(x);
}

/// The numbers of lists with ranges. What would make them too many is skipped.
class ExpandedList
{
public:
    ExpandedList(const QString& rangeSeparator, const QString& listSeparator)
        : m_rangeSeparator(rangeSeparator), m_listSeparator(listSeparator)
    {}

    void append(const QString& text)
    {
        forEachPart(text, m_listSeparator, [this](const QString& piece) { appendPiece(piece); });
    }

    const QVector<long>& values() const { return m_values; }

private:
    static constexpr unsigned long kMostValues = 16 * 1024 * 1024;

    /// A number, or ends of ranges of which each but the first opens no number of its own.
    void appendPiece(const QString& piece)
    {
        bool expanded = false;  // the pair before, whose end opens the next one
        int ends = 0;
        QString first;
        forEachPart(piece, m_rangeSeparator, [&](const QString& end) {
            if (ends++ > 0)
                expanded = appendPair(first, end, expanded);
            first = end;
        });
        if (ends == 1 && CVelmString::IsDigitStr(first) && hasRoom(1))
            m_values.append(first.toLong());
    }

    /// Appends the numbers from one end to the other; without the first if it stands at the end of
    /// the list already. @return whether that could be done
    bool appendPair(const QString& first, const QString& second, bool hasFirst)
    {
        constexpr unsigned long kTooFar = 2147483647;
        if (!CVelmString::IsDigitStr(first) || !CVelmString::IsDigitStr(second))
            return false;
        const long x = first.toLong();
        const long y = second.toLong();
        const unsigned long count = distance(x, y) + (hasFirst ? 0 : 1);
        if (distance(x, y) >= kTooFar || !hasRoom(count))
            return false;
        const int before = m_values.size();
        m_values.resize(before + static_cast<int>(count));
        const unsigned long step = x < y ? 1 : -1UL;  // may pass the limits of long at the ends
        unsigned long value = static_cast<unsigned long>(x) + (hasFirst ? step : 0);
        for (auto place = m_values.begin() + before; place != m_values.end(); ++place) {
            *place = static_cast<long>(value);
            value += step;
        }
        return true;
    }

    bool hasRoom(unsigned long more) const
    {
        return more <= kMostValues - static_cast<unsigned long>(m_values.size());
    }

    const QString m_rangeSeparator;
    const QString m_listSeparator;
    QVector<long> m_values;
};

/// The numbers in ascending order, runs of consecutive ones as ranges.
QStringList compressed(QVector<long> values, const QString& rangeSeparator)
{
    std::sort(values.begin(), values.end());
    QStringList texts;
    for (int first = 0, last = 0; first < values.size(); first = ++last) {
        while (last + 1 < values.size() && values[last + 1] > values[last]
               && values[last + 1] == values[last] + 1)
            ++last;
        QString text = QString::number(values[first]);
        if (last > first)
            text += rangeSeparator + QString::number(values[last]);
        texts.append(text);
    }
    return texts;
}

/// Without decimals where there are hardly any.
QString fixedText(double value, int precision)
{
    constexpr double kSmallestFraction = 0.0001;
    const double whole = std::trunc(value) + 0.0;  // the sum makes -0 a plain 0
    const bool isWhole = std::abs(value - whole) < kSmallestFraction;
    return isWhole ? QString::number(whole, 'f', 0) : QString::number(value, 'f', precision);
}

/// The number that FindSkipNum() finds where some are used.
std::optional<long> firstFree(QVector<long> used, const long* start)
{
    std::sort(used.begin(), used.end());
    if (start && *start < used.first())
        return *start;
    const bool beyond = start && used.last() < *start;
    const auto gap = std::adjacent_find(used.cbegin(), used.cend(), [](long lower, long upper) {
        return distance(lower, upper) > 1;
    });
    if (!beyond && gap != used.cend())
        return *gap + 1;
    if (used.last() == std::numeric_limits<long>::max())
        return std::nullopt;
    return used.last() + 1;
}

}  // namespace

using velm::detail::orEmpty;

QStringList CVelmString::String2StringList(const QString& text, const QString& separator,
                                           bool keepLeading)
{
    return orEmpty(
        [&] { return keepLeading ? scanningSplit(text, separator) : text.split(separator); });
}

QStringList CVelmString::SplitString(const QString& text, const QString& separator)
{
    return orEmpty([&] { return text.split(separator, Qt::SkipEmptyParts); });
}

QVector<long> CVelmString::String2LongList(const QString& text, const QString& rangeSeparator,
                                           const QString& listSeparator)
{
    return StringList2LongList({text}, rangeSeparator, listSeparator);
}

QVector<long> CVelmString::StringList2LongList(const QStringList& list,
                                               const QString& rangeSeparator,
                                               const QString& listSeparator)
{
    return orEmpty([&] {
        ExpandedList expanded(rangeSeparator, listSeparator);
        for (const QString& text : list)
            expanded.append(text);
        return expanded.values();
    });
}

QStringList CVelmString::LongList2StringList(const QVector<long>& values,
                                             const QString& rangeSeparator)
{
    return orEmpty([&] { return compressed(values, rangeSeparator); });
}

QString CVelmString::LongList2String(const QVector<long>& values, const QString& rangeSeparator,
                                     const QString& listSeparator)
{
    return orEmpty([&] { return compressed(values, rangeSeparator).join(listSeparator); });
}

QVector<double> CVelmString::StringList2DoubleList(const QStringList& list)
{
    return orEmpty([&] {
        QVector<double> values;
        values.reserve(list.size());
        for (const QString& text : list)
            values.append(text.toDouble());
        return values;
    });
}

QStringList CVelmString::DoubleList2StringList(const QVector<double>& values, int precision)
{
    return orEmpty([&] {
        QStringList texts;
        texts.reserve(values.size());
        for (const double value : values)
            texts.append(fixedText(value, precision));
        return texts;
    });
}

bool CVelmString::FindSkipNum(long& result, const QVector<long>& used, long* start)
{
    if (used.isEmpty()) {
        if (start)
            result = *start;
        return start != nullptr;
    }
    const std::optional<long> free = orEmpty([&] { return firstFree(used, start); });
    result = free.value_or(result);
    return free.has_value();
}

QString CVelmString::Double2QString(double value)
{
    QString text = QString::number(value, 'f', 15);
    const int point = text.indexOf(QLatin1Char('.'));
    if (point < 0)
        return QString::number(value, 'g', 6);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    return QString::number(value, 'f', text.size() - 1 - point);
}

QString CVelmString::Number2Chinese(long n)
{
    return velm::detail::chineseNumber(n);
}

long CVelmString::Chinese2Number(const QString& text)
{
    bool decimal = false;
    const long value = text.toLong(&decimal);
    if (decimal)
        return value;
    const qint64 parsed = velm::detail::parseChineseNumber(text).value_or(0);
    return parsed >= std::numeric_limits<long>::min() && parsed <= std::numeric_limits<long>::max()
               ? static_cast<long>(parsed)
               : 0;
}

QString CVelmString::Number2EnglishLetters(long n, bool upper)
{
    QString letters;
    while (n >= 1) {
        const long place = (n - 1) % 26;
        letters.prepend(QLatin1Char(static_cast<char>('A' + place)));
        n = (n - 1 - place) / 26;
    }
    return upper ? letters : letters.toLower();
}

long CVelmString::EnglishLetters2Number(QString text)
{
    long value = 0;
    for (const QChar ch : qAsConst(text)) {
        const ushort letter = ch.toUpper().unicode();
        if (letter < 'A' || letter > 'Z')
            return 0;
        if (!velm::detail::multiply(value, 26L, value)
            || !velm::detail::add(value, static_cast<long>(letter - '@'), value))
            return 0;
    }
    return value;
}
