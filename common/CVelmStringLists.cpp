#include "CVelmString.h"

#include "common/ChineseNumber.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace {

/// The split that leaves a separator at the start of a part alone. Of every separator found
/// elsewhere one character is removed, whatever its length.
QStringList scanningSplit(const QString& text, const QString& separator)
{
    QStringList parts;
    int begin = 0;  // of the part
    int from = 0;   // where the search goes on
    for (;;) {
        const int found = text.indexOf(separator, from);
        if (found < 0) {
            parts.append(text.mid(begin));
            return parts;
        }
        if (found == begin) {
            from = begin + 2;
            continue;
        }
        parts.append(text.mid(begin, found - begin));
        begin = from = found + 1;
    }
}

/// |x - y| without overflow.
unsigned long distance(long x, long y)
{
    return x >= y ? static_cast<unsigned long>(x) - static_cast<unsigned long>(y)
                  : static_cast<unsigned long>(y) - static_cast<unsigned long>(x);
}

/// Appends the numbers from x to y; without x if it stands at the end already. False, with nothing
/// appended, if memory cannot hold them.
bool appendRange(QVector<long>& values, long x, long y, bool hasX)
{
    // Qt counts the bytes of a vector in an int.
    constexpr quint64 kMostValues = std::numeric_limits<int>::max() / sizeof(long) - 16;
    const int before = values.size();
    if (static_cast<quint64>(before) + distance(x, y) + 1 > kMostValues)
        return false;
    try {
        if (!hasX)
            values.append(x);
        const long step = x < y ? 1 : -1;
        for (long value = x; value != y;) {
            value += step;
            values.append(value);
        }
    } catch (const std::bad_alloc&) {
        values.resize(before);
        return false;
    }
    return true;
}

void appendPairs(QVector<long>& values, const QStringList& ends)
{
    constexpr unsigned long kTooFar = 2147483647;
    bool expanded = false;  // the pair before, whose end opens the next one
    for (int i = 0; i + 1 < ends.size(); ++i) {
        const QString& first = ends.at(i);
        const QString& second = ends.at(i + 1);
        const bool numbers = CVelmString::IsDigitStr(first) && CVelmString::IsDigitStr(second);
        const long x = first.toLong();
        const long y = second.toLong();
        if (!numbers || distance(x, y) >= kTooFar) {
            expanded = false;
            continue;
        }
        expanded = appendRange(values, x, y, expanded);
    }
}

/// Appends the numbers and ranges of a list.
void appendList(QVector<long>& values, const QString& text, const QString& rangeSeparator,
                const QString& listSeparator)
{
    const QStringList pieces = scanningSplit(text, listSeparator);
    for (const QString& piece : pieces) {
        const QStringList ends = scanningSplit(piece, rangeSeparator);
        if (ends.size() > 1)
            appendPairs(values, ends);
        else if (CVelmString::IsDigitStr(ends.first()))
            values.append(ends.first().toLong());
    }
}

}  // namespace

QStringList CVelmString::String2StringList(const QString& text, const QString& separator,
                                           bool keepLeading)
{
    return keepLeading ? scanningSplit(text, separator) : text.split(separator);
}

QStringList CVelmString::SplitString(const QString& text, const QString& separator)
{
    return text.split(separator, Qt::SkipEmptyParts);
}

QVector<long> CVelmString::String2LongList(const QString& text, const QString& rangeSeparator,
                                           const QString& listSeparator)
{
    QVector<long> values;
    appendList(values, text, rangeSeparator, listSeparator);
    return values;
}

QVector<long> CVelmString::StringList2LongList(const QStringList& list,
                                               const QString& rangeSeparator,
                                               const QString& listSeparator)
{
    QVector<long> values;
    for (const QString& text : list)
        appendList(values, text, rangeSeparator, listSeparator);
    return values;
}

QStringList CVelmString::LongList2StringList(const QVector<long>& values,
                                             const QString& rangeSeparator)
{
    QVector<long> sorted = values;
    std::sort(sorted.begin(), sorted.end());
    QStringList texts;
    for (int first = 0, last = 0; first < sorted.size(); first = ++last) {
        while (last + 1 < sorted.size() && sorted[last + 1] > sorted[last]
               && sorted[last + 1] == sorted[last] + 1)
            ++last;
        QString text = QString::number(sorted[first]);
        if (last > first)
            text += rangeSeparator + QString::number(sorted[last]);
        texts.append(text);
    }
    return texts;
}

QString CVelmString::LongList2String(const QVector<long>& values, const QString& rangeSeparator,
                                     const QString& listSeparator)
{
    return LongList2StringList(values, rangeSeparator).join(listSeparator);
}

QVector<double> CVelmString::StringList2DoubleList(const QStringList& list)
{
    QVector<double> values;
    values.reserve(list.size());
    for (const QString& text : list)
        values.append(text.toDouble());
    return values;
}

QStringList CVelmString::DoubleList2StringList(const QVector<double>& values, int precision)
{
    constexpr double kSmallestFraction = 0.0001;
    QStringList texts;
    texts.reserve(values.size());
    for (const double value : values) {
        const double whole = std::trunc(value) + 0.0;  // the sum makes -0 a plain 0
        const bool isWhole = std::abs(value - whole) < kSmallestFraction;
        texts.append(isWhole ? QString::number(whole, 'f', 0)
                             : QString::number(value, 'f', precision));
    }
    return texts;
}

bool CVelmString::FindSkipNum(long& result, const QVector<long>& used, long* start)
{
    if (used.isEmpty()) {
        if (start)
            result = *start;
        return start != nullptr;
    }
    QVector<long> sorted = used;
    std::sort(sorted.begin(), sorted.end());
    if (start && *start < sorted.first()) {
        result = *start;
        return true;
    }
    const bool beyond = start && sorted.last() < *start;
    const auto gap = std::adjacent_find(sorted.cbegin(), sorted.cend(), [](long lower, long upper) {
        return distance(lower, upper) > 1;
    });
    if (!beyond && gap != sorted.cend()) {
        result = *gap + 1;
        return true;
    }
    if (sorted.last() == std::numeric_limits<long>::max())
        return false;
    result = sorted.last() + 1;
    return true;
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
        if (__builtin_mul_overflow(value, 26L, &value)
            || __builtin_add_overflow(value, static_cast<long>(letter - '@'), &value))
            return 0;
    }
    return value;
}
