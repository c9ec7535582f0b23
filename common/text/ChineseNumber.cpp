#include "common/text/ChineseNumber.h"

#include "common/text/CheckedArithmetic.h"

#include <array>
#include <limits>

namespace velm::detail {

namespace {

const QChar kZero(0x96F6);   // 零
const QChar kTen(0x5341);    // 十
const QChar kYi(0x4EBF);     // 亿, 1e8
const QChar kMinus(0x8D1F);  // 负

const QString& digits()
{
    static const QString text = QStringLiteral("零一二三四五六七八九");
    return text;
}

/// Units of the places of a section, from the ones: none, 十, 百, 千.
const QString& placeUnits()
{
    static const QString text = QStringLiteral(" 十百千");
    return text;
}

struct SectionUnit
{
    QString text;
    quint64 value;
};

/// Units of the sections, from the lowest. Two characters where one would be ambiguous: "一万" is
/// 1e4, not 1e12.
const std::array<SectionUnit, 5>& sectionUnits()
{
    static const std::array<SectionUnit, 5> units{{{QString(), 1},
                                                   {QStringLiteral("万"), 10000},
                                                   {QStringLiteral("亿"), 100000000},
                                                   {QStringLiteral("万亿"), 1000000000000},
                                                   {QStringLiteral("亿亿"), 10000000000000000}}};
    return units;
}

/// The reading of 0 to 9999: empty for 0, runs of inner zeros as one "零", no zeros at either end.
QString sectionText(unsigned int section)
{
    QString text;
    bool pendingZero = false;
    for (int place = 0; section > 0; ++place, section /= 10) {
        const int digit = static_cast<int>(section % 10);
        if (digit == 0) {
            pendingZero = !text.isEmpty();
            continue;
        }
        if (pendingZero)
            text.prepend(kZero);
        pendingZero = false;
        if (place > 0)
            text.prepend(placeUnits().at(place));
        text.prepend(digits().at(digit));
    }
    return text;
}

/// Reads a Chinese numeral from left to right.
class Reader
{
public:
    explicit Reader(const QString& text) : m_text(text) {}

    std::optional<quint64> read()
    {
        while (m_pos < m_text.size()) {
            if (!readSectionUnit() && !readPlaceUnit() && !readDigit())
                return std::nullopt;
        }
        closeDigit();
        return add(m_section, 1) ? std::optional<quint64>(m_total) : std::nullopt;
    }

private:
    bool readSectionUnit()
    {
        for (size_t i = sectionUnits().size() - 1; i > 0; --i) {
            const SectionUnit& unit = sectionUnits()[i];
            if (QStringView(m_text).mid(m_pos).startsWith(unit.text)) {
                m_pos += unit.text.size();
                closeDigit();
                return closeSection(unit);
            }
        }
        return false;
    }

    /// "亿" behind a part in "万" multiplies that part too: 一万零二亿 is 10002e8.
    bool closeSection(const SectionUnit& unit)
    {
        const quint64 section = m_section;
        m_section = 0;
        if (unit.text == QString(kYi) && m_total < unit.value) {
            const quint64 below = m_total;
            m_total = 0;
            return add(below + section, unit.value);
        }
        return add(section, unit.value);
    }

    bool readPlaceUnit()
    {
        const int place = placeUnits().indexOf(m_text.at(m_pos), 1);
        if (place < 0)
            return false;
        if (!m_digit && m_text.at(m_pos) != kTen)
            return false;
        static constexpr std::array<quint64, 4> kPlaceValues{1, 10, 100, 1000};
        m_section += m_digit.value_or(1) * kPlaceValues[static_cast<size_t>(place)];
        m_digit.reset();
        ++m_pos;
        return m_section <= 9999;
    }

    bool readDigit()
    {
        const int digit = digits().indexOf(m_text.at(m_pos));
        if (digit < 0 || m_digit.value_or(0) != 0)
            return false;
        if (digit > 0)
            m_digit = static_cast<quint64>(digit);
        ++m_pos;
        return true;
    }

    void closeDigit()
    {
        m_section += m_digit.value_or(0);
        m_digit.reset();
    }

    bool add(quint64 section, quint64 unit)
    {
        quint64 product = 0;
        return multiply(section, unit, product) && detail::add(m_total, product, m_total);
    }

    const QString& m_text;
    int m_pos = 0;
    quint64 m_total = 0;             // of the finished sections
    quint64 m_section = 0;           // of the section being read
    std::optional<quint64> m_digit;  // read, but its unit not yet
};

}  // namespace

QString chineseNumber(qint64 n)
{
    if (n == 0)
        return QString(kZero);
    quint64 rest = n < 0 ? 0 - static_cast<quint64>(n) : static_cast<quint64>(n);
    QString text;
    unsigned int lower = 0;  // the section below
    for (const SectionUnit& unit : sectionUnits()) {
        const auto section = static_cast<unsigned int>(rest % 10000);
        if (lower >= 1 && lower <= 999)
            text.prepend(kZero);
        if (section != 0)
            text.prepend(sectionText(section) + unit.text);
        lower = section;
        rest /= 10000;
        if (rest == 0)
            break;
    }
    if (text.startsWith(QStringLiteral("一十")))
        text.remove(0, 1);
    return n < 0 ? kMinus + text : text;
}

std::optional<qint64> parseChineseNumber(const QString& text)
{
    const bool negative = text.startsWith(kMinus);
    const QString magnitudeText = negative ? text.mid(1) : text;
    if (magnitudeText.isEmpty())
        return std::nullopt;
    const std::optional<quint64> magnitude = Reader(magnitudeText).read();
    constexpr quint64 kGreatest = static_cast<quint64>(std::numeric_limits<qint64>::max());
    if (!magnitude || *magnitude > kGreatest + (negative ? 1 : 0))
        return std::nullopt;
    return negative ? static_cast<qint64>(0 - *magnitude) : static_cast<qint64>(*magnitude);
}

}  // namespace velm::detail
