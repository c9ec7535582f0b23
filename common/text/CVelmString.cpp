#include "CVelmString.h"

#include "common/text/Gb18030.h"
#include "common/text/Pinyin.h"

#include <QTextCodec>

#include <algorithm>
#include <array>
#include <limits>

namespace {

constexpr unsigned char kFirstGb2312Byte = 0xA1;
constexpr unsigned int kMostBytes = std::numeric_limits<int>::max();  // of a QByteArray

QTextCodec* utf8()
{
    static QTextCodec* const codec = QTextCodec::codecForName("UTF-8");
    return codec;
}

QTextCodec* gb18030()
{
    static QTextCodec* const codec = QTextCodec::codecForName("GB18030");
    return codec;
}

bool isGb18030(const QTextCodec* codec)
{
    return codec->name() == "GB18030";
}

/// Where Qt has ICU, "GB2312" is but another name of this codec.
bool isGbk(const QTextCodec* codec)
{
    return codec->name() == "GBK" || codec->name() == "GB2312";
}

/// The codecs in which a replacement character may be real. They are Qt's own in every build and
/// count what is invalid.
bool isUtf(const QTextCodec* codec)
{
    const QByteArray name = codec->name();
    return name == "UTF-8" || name.startsWith("UTF-16") || name.startsWith("UTF-32");
}

/// Whether the bytes are decoded by what is settled here instead of the codec's own table.
bool isSettled(const QByteArray& data, const QTextCodec* codec)
{
    return (isGb18030(codec) && velm::detail::isValidGb18030(data))
           || (codec->name() == "GBK" && velm::detail::isValidGbk(data));
}

/// Local 8-bit bytes of @p text, decoded by one codec and encoded by another, as local 8-bit text
/// again.
QString recode(const QString& text, const char* from, const char* to)
{
    const QString decoded = QTextCodec::codecForName(from)->toUnicode(text.toLocal8Bit());
    return QString::fromLocal8Bit(QTextCodec::codecForName(to)->fromUnicode(decoded));
}

/// Decodes and tells whether the codec met nothing invalid. ICU codecs do not count that and leave
/// a replacement character; one that really stood in the text comes back as the same bytes.
bool decodesCleanly(const QByteArray& data, const QTextCodec* codec, QString& text)
{
    QTextCodec::ConverterState state;
    text = codec->toUnicode(data.constData(), data.size(), &state);
    if (state.invalidChars != 0)
        return false;
    return !text.contains(QChar(QChar::ReplacementCharacter)) || isUtf(codec)
           || data.startsWith(codec->fromUnicode(text));
}

/// Whether the year has a 29 February.
bool isLeapYear(int year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int daysInMonth(int year, int month)
{
    static constexpr std::array<int, 12> kDays{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear(year) ? 29 : kDays[static_cast<size_t>(month - 1)];
}

bool hasKnownRegion(const QString& id)
{
    static constexpr std::array<int, 35> kRegions{11, 22, 35, 44, 53, 12, 23, 36, 45, 54, 13, 31,
                                                  37, 46, 61, 14, 32, 41, 50, 62, 15, 33, 42, 51,
                                                  63, 21, 34, 43, 52, 64, 65, 71, 81, 82, 91};
    const QStringView region = QStringView(id).left(2);
    return std::any_of(kRegions.begin(), kRegions.end(),
                       [region](int known) { return region == QString::number(known); });
}

/// The check character of the first 17 (ISO 7064 MOD 11-2).
char checkCharacter(const QByteArray& id)
{
    static constexpr std::array<int, 17> kWeights{7, 9, 10, 5,  8, 4, 2, 1, 6,
                                                  3, 7, 9,  10, 5, 8, 4, 2};
    int sum = 0;
    for (size_t i = 0; i < kWeights.size(); ++i)
        sum += (id.at(static_cast<int>(i)) - '0') * kWeights[i];
    return "10X98765432"[((sum % 11) + 11) % 11];
}

unsigned int bit(char value, unsigned int shift)
{
    return static_cast<unsigned int>(static_cast<unsigned char>(value)) << shift;
}

}  // namespace

CVelmString::CVelmString() : m_codec(gb18030())
{
    Init();
}

CVelmString::CVelmString(const CVelmString& other) = default;

CVelmString& CVelmString::operator=(const CVelmString& other) = default;

CVelmString::~CVelmString() = default;

QString CVelmString::GBKToUTF8(const QString& text)
{
    return recode(text, "gb2312", "utf-8");
}

QString CVelmString::UTF8ToGBK(const QString& text)
{
    return recode(text, "utf-8", "gb2312");
}

bool CVelmString::IsTextCodec(const QByteArray& data, const QTextCodec* codec)
{
    if (!codec)
        return false;
    if (isGb18030(codec))
        return velm::detail::isValidGb18030(data);
    if (isGbk(codec))
        return velm::detail::isValidGbk(data);
    QString text;
    return decodesCleanly(data, codec, text);
}

bool CVelmString::IsTextCodec(const char* data, unsigned int size, const QTextCodec* codec)
{
    return size <= kMostBytes && IsTextCodec(QByteArray(data, static_cast<int>(size)), codec);
}

bool CVelmString::IsUTF8(const QByteArray& data)
{
    return IsTextCodec(data, utf8());
}

bool CVelmString::IsUTF8(const char* data, unsigned int size)
{
    return IsTextCodec(data, size, utf8());
}

bool CVelmString::IsGBK(const QByteArray& data)
{
    return IsTextCodec(data, gb18030());
}

bool CVelmString::IsGBK(const char* data, unsigned int size)
{
    return IsTextCodec(data, size, gb18030());
}

QString CVelmString::BytesToString(const QByteArray& data, const QTextCodec* codec)
{
    if (codec)
        return isSettled(data, codec) ? velm::detail::decodeGb18030(data) : codec->toUnicode(data);
    QString text;
    if (decodesCleanly(data, utf8(), text))
        return text;
    return velm::detail::isValidGb18030(data) ? velm::detail::decodeGb18030(data) : QString();
}

QString CVelmString::CharsToString(const char* data, unsigned int size, const QTextCodec* codec)
{
    return size <= kMostBytes ? BytesToString(QByteArray(data, static_cast<int>(size)), codec)
                              : QString();
}

QString CVelmString::getPYChar(const QChar& ch)
{
    const QByteArray bytes = velm::detail::gbkBytes(m_codec, ch);
    const auto hi = static_cast<unsigned char>(bytes.size() > 0 ? bytes.at(0) : 0);
    if (hi < kFirstGb2312Byte)
        return QString(ch);
    const auto lo = static_cast<unsigned char>(bytes.size() > 1 ? bytes.at(1) : 0);
    if (lo < kFirstGb2312Byte)
        return QString();
    return velm::detail::syllableOfKey(hi * 256 + lo - 65536);
}

QString CVelmString::getPYString(const QString& text)
{
    return getPYStrings(text).join(QString());
}

QStringList CVelmString::getPYStrings(const QString& text)
{
    QStringList syllables;
    syllables.reserve(text.size());
    for (const QChar ch : text)
        syllables.append(getPYChar(ch));
    return syllables;
}

QString CVelmString::getChineseSpell(const QString& text)
{
    QString initials;
    for (const QChar ch : text) {
        const QByteArray bytes = velm::detail::gbkBytes(m_codec, ch);
        if (bytes.size() < 2) {
            initials += ch;
            continue;
        }
        const auto hi = static_cast<unsigned char>(bytes.at(0));
        const auto lo = static_cast<unsigned char>(bytes.at(1));
        if (hi >= kFirstGb2312Byte && lo >= kFirstGb2312Byte)
            initials += firstLetter((hi - 160) * 100 + (lo - 160));
    }
    return initials;
}

bool CVelmString::IsDigitStr(const QString& text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar ch) {
        return (ch >= QLatin1Char('0') && ch <= QLatin1Char('9')) || ch == QLatin1Char('.')
               || ch == QLatin1Char('-');
    });
}

int CVelmString::ChineseCount(const QString& text)
{
    return static_cast<int>(std::count_if(text.cbegin(), text.cend(), [](QChar ch) {
        return ch.unicode() >= 0x04BB && ch.unicode() <= 0xFFFD;
    }));
}

unsigned int CVelmString::GetNumberOfSymbol(const QString& text, const QString& symbol)
{
    if (symbol.isEmpty())
        return 0;
    return static_cast<unsigned int>(text.split(symbol).size() - 1);
}

bool CVelmString::CheckDate(const QString& year, const QString& month, const QString& day)
{
    const int monthNumber = month.toInt();
    if (monthNumber < 1 || monthNumber > 12)
        return false;
    const int dayNumber = day.toInt();
    return dayNumber >= 0 && dayNumber <= daysInMonth(year.toInt(), monthNumber);
}

bool CVelmString::CheckIDCard18(const QString& id)
{
    if (id.size() != 18 || !hasKnownRegion(id))
        return false;
    if (!CheckDate(id.mid(6, 4), id.mid(10, 2), id.mid(12, 2)))
        return false;
    return id.at(17) == QLatin1Char(checkCharacter(id.toLatin1()));
}

void CVelmString::Hex2Bits(char* hex, char* bits, unsigned int bitCount)
{
    const unsigned int digits = bitCount / 4;
    for (unsigned int i = 0; i < digits; ++i)
        hex[i] = static_cast<char>(hex[i] < 'A' ? hex[i] - '0' : hex[i] - 55);
    for (unsigned int i = 0; i < bitCount; ++i)
        bits[i] = i / 4 < digits ? static_cast<char>((bit(hex[i / 4], i % 4) & 15) >> 3) : '\0';
}

void CVelmString::Bits2Hex(char* hex, const char* bits, unsigned int bitCount)
{
    for (unsigned int digit = 0; digit < bitCount / 4; ++digit) {
        unsigned int value = 0;
        for (unsigned int i = 0; i < 4; ++i)
            value += bit(bits[digit * 4 + i], 3 - i);
        hex[digit] = static_cast<char>(value < 10 ? value + '0' : value + 55);
    }
}

void CVelmString::Bits2Bytes(char* bytes, const char* bits, unsigned int bitCount)
{
    for (unsigned int byte = 0; byte < bitCount / 8; ++byte) {
        unsigned int value = 0;
        for (unsigned int i = 0; i < 8; ++i)
            value |= bit(bits[byte * 8 + i], 7 - i);
        bytes[byte] = static_cast<char>(value);
    }
}

void CVelmString::Bytes2Bits(const char* bytes, char* bits, unsigned int bitCount)
{
    for (unsigned int i = 0; i < bitCount; ++i)
        bits[i] = static_cast<char>((static_cast<unsigned char>(bytes[i / 8]) >> (7 - i % 8)) & 1);
}

bool CVelmString::Init()
{
    return true;
}

QString CVelmString::firstLetter(int qw)
{
    return velm::detail::initialOfPosition(qw);
}
