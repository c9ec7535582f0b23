#include "CVelmString.h"
#include "support/LocalCodec.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QTextCodec>

namespace {

struct BytesCase
{
    const char* name;
    const char* hex;
    bool utf8;
    bool gb18030;
    QString text;  // read without a codec
};

class StringBytes : public testing::TestWithParam<BytesCase>
{};

struct CodecCase
{
    const char* codec;
    const char* hex;
    bool valid;
};

bool isWithin(int byte, int from, int to)
{
    return byte >= from && byte <= to;
}

QByteArray bytesOf(std::initializer_list<int> bytes)
{
    QByteArray data;
    for (const int byte : bytes)
        data += static_cast<char>(byte);
    return data;
}

/// The bit patterns of RFC 3629, section 3: 2 to 4 bytes, more than the character takes if wanted.
QByteArray utf8Form(uint character, int length)
{
    QByteArray data;
    for (int shift = 6 * (length - 1); shift >= 0; shift -= 6)
        data += static_cast<char>(0x80 | ((character >> shift) & 0x3F));
    data[0] = static_cast<char>(data.at(0) | (0xF00 >> length & 0xFF));
    return data;
}

/// The characters of all GBK pairs within, in the order of their bytes.
QString cells(int firstLead, int lastLead, int firstTrail, int lastTrail)
{
    QByteArray data;
    for (int lead = firstLead; lead <= lastLead; ++lead) {
        for (int trail = firstTrail; trail <= lastTrail; ++trail)
            data += trail == 0x7F ? QByteArray() : bytesOf({lead, trail});
    }
    return CVelmString::BytesToString(data, QTextCodec::codecForName("GB18030"));
}

QByteArray md5(const QString& text)
{
    return QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Md5).toHex();
}

}  // namespace

TEST_P(StringBytes, AreRecognisedAndReadWithoutACodec)
{
    const BytesCase& c = GetParam();
    const QByteArray data = QByteArray::fromHex(c.hex);
    EXPECT_EQ(CVelmString::IsUTF8(data), c.utf8);
    EXPECT_EQ(CVelmString::IsGBK(data), c.gb18030);
    EXPECT_EQ(CVelmString::BytesToString(data, nullptr), c.text);
    // What stands behind the given size is not looked at.
    const QByteArray longer = data + '\xFF';
    const auto size = static_cast<unsigned int>(data.size());
    EXPECT_EQ(CVelmString::IsUTF8(longer.constData(), size), c.utf8);
    EXPECT_EQ(CVelmString::IsGBK(longer.constData(), size), c.gb18030);
    EXPECT_EQ(CVelmString::CharsToString(longer.constData(), size, nullptr), c.text);
}

INSTANTIATE_TEST_SUITE_P(
    Sequences, StringBytes,
    testing::Values(BytesCase{"Empty", "", true, true, QString()},
                    BytesCase{"Utf8", "e6b58b20", true, false, QStringLiteral("测 ")},
                    BytesCase{"Gbk", "b2e2c1bf", false, true, QStringLiteral("测量")},
                    BytesCase{"Zero", "4100b2e2", false, true, QStringLiteral("A\0测")},
                    BytesCase{"CutUtf8", "41e6b5", true, true, QStringLiteral("A")},
                    BytesCase{"CutGbk", "b2e2c1", false, true, QStringLiteral("测")},
                    BytesCase{"Utf8Mark", "efbbbf4141", true, true, QStringLiteral("AA")},
                    BytesCase{"Overlong", "c0af", false, true, QStringLiteral("蜡")},
                    BytesCase{"Surrogate", "eda080", false, false, QString()},
                    BytesCase{"BehindUnicode", "f4908080", false, false, QString()},
                    BytesCase{"Replacement", "8431a437", false, true, QStringLiteral("\uFFFD")},
                    BytesCase{"Utf8Replacement", "efbfbd", true, true, QStringLiteral("\uFFFD")},
                    BytesCase{"Neither", "ff41", false, false, QString()}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(StringCodePage, JudgesEveryPairOfBytesByTheStandards)
{
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            const QByteArray pair = bytesOf({a, b});
            const bool ascii = a < 0x80 && b < 0x80;
            const bool utf8 = ascii || (isWithin(a, 0xC2, 0xDF) && isWithin(b, 0x80, 0xBF));
            const bool utf8Cut = (a < 0x80 && isWithin(b, 0xC2, 0xF4))
                                 || (isWithin(a, 0xE0, 0xF4) && isWithin(b, 0x80, 0xBF));
            ASSERT_EQ(CVelmString::IsUTF8(pair + '\n'), utf8) << pair.toHex().constData();
            ASSERT_EQ(CVelmString::IsUTF8(pair), utf8 || utf8Cut) << pair.toHex().constData();
            const bool lead = isWithin(a, 0x81, 0xFE);
            const bool gbk = ascii || (lead && isWithin(b, 0x40, 0xFE) && b != 0x7F);
            const bool gbkCut = a < 0x80 && isWithin(b, 0x81, 0xFE);
            ASSERT_EQ(CVelmString::IsGBK(pair + '\n'), gbk) << pair.toHex().constData();
            ASSERT_EQ(CVelmString::IsGBK(pair), gbk || gbkCut || (lead && isWithin(b, '0', '9')))
                << pair.toHex().constData();
        }
    }
}

TEST(StringCodePage, KnowsUtf8ByItsValues)
{
    for (uint value = 0x80; value < 0x200000; value += value < 0x10000 ? 1 : 0x3FF) {
        const int length = value < 0x800 ? 2 : value < 0x10000 ? 3 : 4;
        const bool valid = value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
        const QByteArray data = utf8Form(value, length) + 'z';
        ASSERT_EQ(CVelmString::IsUTF8(data), valid) << value;
        if (length < 4) {
            ASSERT_FALSE(CVelmString::IsUTF8(utf8Form(value, length + 1) + 'z')) << value;
        }
        if (valid && value != 0xFEFF) {  // at the beginning a byte order mark
            ASSERT_EQ(CVelmString::BytesToString(data, nullptr),
                      QString::fromUcs4(&value, 1) + QLatin1Char('z'));
        }
    }
}

TEST(StringCodePage, TakesTheGroupsOfFourThatStandForCharacters)
{
    QByteArray bmp;
    int valid = 0;
    for (int group = 0; group < 126 * 10 * 126 * 10; ++group) {
        const QByteArray data = bytesOf({0x81 + group / 12600, 0x30 + group / 1260 % 10,
                                         0x81 + group / 10 % 126, 0x30 + group % 10});
        if (CVelmString::IsGBK(data)) {
            ++valid;
            bmp += data.at(0) < '\x90' ? data : QByteArray();
        }
    }
    EXPECT_EQ(valid,
              39420 + 0x100000);  // what 23,940 pairs and ASCII leave of the BMP, and 16 planes
    const QString text = CVelmString::BytesToString(bmp, nullptr);
    ASSERT_EQ(text.size(), 39420);
    uint sum = 0;
    for (int i = 0; i < text.size(); ++i)
        sum += static_cast<uint>(i + 1) * text.at(i).unicode();
    // The same sum over the gb18030 codec of Python 3, with 8135F437 as U+E7C7.
    EXPECT_EQ(sum, 2878234637U);
}

TEST(StringCodePage, FindsInvalidBytesInAnyCodec)
{
    for (const CodecCase& c :
         {CodecCase{"Big5", "a4a4", true}, CodecCase{"Big5", "41a4", true},
          CodecCase{"Big5", "a420", false}, CodecCase{"Shift_JIS", "8140", true},
          CodecCase{"Shift_JIS", "8041", false}, CodecCase{"EUC-JP", "fdfd", false},
          CodecCase{"windows-1253", "c1", true}, CodecCase{"windows-1253", "d2", false},
          CodecCase{"GBK", "8140a2e3b2", true}, CodecCase{"GBK", "81308130", false},
          CodecCase{"GBK", "80", false}, CodecCase{"GBK", "ff", false}}) {
        const QByteArray data = QByteArray::fromHex(c.hex);
        EXPECT_EQ(CVelmString::IsTextCodec(data, QTextCodec::codecForName(c.codec)), c.valid)
            << c.codec << ' ' << c.hex;
    }
    EXPECT_FALSE(CVelmString::IsTextCodec("A", nullptr));
}

TEST(StringCodePage, ReadsWithTheGivenCodecOnly)
{
    const auto read = [](const char* hex, const char* codec) {
        return CVelmString::BytesToString(QByteArray::fromHex(hex),
                                          QTextCodec::codecForName(codec));
    };
    EXPECT_EQ(read("a4a4", "Big5"), QStringLiteral("中"));
    EXPECT_EQ(read("c3a9", "ISO-8859-1"), QStringLiteral("Ã©"));
    EXPECT_EQ(read("c2a4", "GB18030"), QStringLiteral("陇"));
    EXPECT_EQ(read("c2a4", "UTF-8"), QStringLiteral("¤"));
}

TEST(StringCodePage, MendsTextThatWasReadInTheWrongCodePage)
{
    const LocalCodec local("GBK");
    // In UTF-8 "测量" is E6 B5 8B E9 87 8F, in GBK those bytes are 娴 嬮 噺.
    EXPECT_EQ(CVelmString::GBKToUTF8(QStringLiteral("测量")), QStringLiteral("娴嬮噺"));
    EXPECT_EQ(CVelmString::UTF8ToGBK(QStringLiteral("娴嬮噺")), QStringLiteral("测量"));
    EXPECT_EQ(CVelmString::GBKToUTF8(QStringLiteral("dwg 1")), QStringLiteral("dwg 1"));
}

TEST(StringPinyin, ReadsEveryGbkCharacterByItsBytes)
{
    CVelmString string;
    // Both sums were made by a Python script from the table of syllables and the ranges of
    // initials.
    const QString area = cells(0xA1, 0xFE, 0xA1, 0xFE);
    ASSERT_EQ(area.size(), 94 * 94);
    EXPECT_EQ(md5(string.getPYStrings(area).join(QLatin1Char(' '))),
              "b01214f59d5b1612aa0376b72aadd36d");
    EXPECT_EQ(md5(string.getChineseSpell(area)), "de52a92adb80686cd2617a396e178b0c");

    const QString lowTrails = cells(0xA1, 0xFE, 0x40, 0xA0);
    EXPECT_EQ(string.getPYStrings(lowTrails).count(QString()), 94 * 96);
    EXPECT_EQ(string.getChineseSpell(lowTrails), QString());
    const QString lowLeads = cells(0x81, 0xA0, 0x40, 0xFE);
    ASSERT_EQ(lowLeads.size(), 32 * 190);
    EXPECT_EQ(string.getPYString(lowLeads), lowLeads);
    EXPECT_EQ(string.getChineseSpell(lowLeads), QString());
}

TEST(StringPinyin, SpellsNamesAndKeepsWhatIsNotChinese)
{
    const CVelmString original;
    CVelmString string(original);
    EXPECT_EQ(string.getPYString(QStringLiteral("测量Point 中国")),
              QStringLiteral("celiangPoint zhongguo"));
    EXPECT_EQ(string.getPYStrings(QStringLiteral("绿 女")).join(QLatin1Char('|')),
              QStringLiteral("lv| |nv"));
    EXPECT_EQ(string.getChineseSpell(QStringLiteral("测量point")), QStringLiteral("CLpoint"));
    EXPECT_EQ(string.getChineseSpell(QStringLiteral("A1中国")), QStringLiteral("A1ZG"));
    // 8140, D8A1, A2E3, A8BC in this order; the last two are not in GBK at all.
    EXPECT_EQ(string.getPYString(QStringLiteral("丂亍€ḿñ😀")), QStringLiteral("丂zuoaañ😀"));
    EXPECT_EQ(string.getChineseSpell(QStringLiteral("丂亍€ḿñ😀")), QStringLiteral("ñ😀"));
    EXPECT_EQ(string.getPYStrings(QString()), QStringList());
}
