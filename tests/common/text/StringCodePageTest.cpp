#include "CVelmString.h"
#include "support/LocalCodec.h"
#include "support/Values.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QTextCodec>

namespace {

/// From texts such as "Big5 a4a4"; without a name there is no codec.
std::pair<const QTextCodec*, QByteArray> codecAndBytes(const QString& text)
{
    const QByteArray name = text.section(QLatin1Char(' '), 0, 0).toLatin1();
    const QByteArray hex = text.section(QLatin1Char(' '), 1).toLatin1();
    return {name.isEmpty() ? nullptr : QTextCodec::codecForName(name), QByteArray::fromHex(hex)};
}

QByteArray pairOf(int first, int second)
{
    return QByteArray(1, static_cast<char>(first)) + static_cast<char>(second);
}

/// The characters of all GBK pairs within, in the order of their bytes.
QString cells(int firstLead, int lastLead, int firstTrail, int lastTrail)
{
    QByteArray data;
    for (int lead = firstLead; lead <= lastLead; ++lead) {
        for (int trail = firstTrail; trail <= lastTrail; ++trail)
            data += trail == 0x7F ? QByteArray() : pairOf(lead, trail);
    }
    return CVelmString::BytesToString(data, QTextCodec::codecForName("GB18030"));
}

QByteArray md5(const QString& text)
{
    return QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Md5).toHex();
}

}  // namespace

TEST(StringCodePage, IsCheckedOrFoundOut)
{
    // U+FFFD; 90308130 is U+10000, and U+20000 stands 65536 groups on, at 95328236 (GB 18030-2005,
    // table D.1); the pair that moved in the tables; cut sequences; ...
    QStringList texts;
    for (const QString& valid :
         listOf(u"UTF-8 efbbbfefbfbd|UTF-16LE fdff4100|UTF-32LE fdff0000|GB18030 8431a437|"
                "GB18030 4190308130|GB18030 95328236b2e2|GB18030 e3329a35|GB18030 a8bc8135f437|"
                "GB18030 b2e2c1|GB18030 813081|GBK a2e3a8bc|GBK b2e2b2|Big5 41a4a4a4|"
                "Shift_JIS 93fa"_s)) {
        const auto [codec, bytes] = codecAndBytes(valid);
        EXPECT_TRUE(CVelmString::IsTextCodec(bytes, codec)) << valid.toStdString();
        texts += CVelmString::BytesToString(bytes, codec);
    }
    EXPECT_EQ(texts, listOf(u"\uFFFD|\uFFFDA|\uFFFD|\uFFFD|A\U00010000|\U00020000测|\U0010FFFF|"
                            "\u1E3F\uE7C7|测||\u20AC\u1E3F|测|A中|日"_s));
    EXPECT_TRUE(CVelmString::IsTextCodec("\x81\x40", QTextCodec::codecForName("gb2312")));
    // A surrogate, U+110000, behind the BMP, before and behind the other planes, broken groups,
    // four bytes in GBK, ...
    for (const QString& invalid : listOf(
             u"UTF-8 eda08020|UTF-8 f490808020|GB18030 8431a530|GB18030 8f39fe39|GB18030 e3329a36|"
             "GB18030 81308030|GB18030 81308180|GBK 81308130|GBK 8431a439|GBK 90308130|GBK 80|"
             "GBK ff|gb2312 ff|Big5 a420|Shift_JIS 8041|EUC-JP fdfd|windows-1253 d2| 41"_s)) {
        const auto [codec, bytes] = codecAndBytes(invalid);
        EXPECT_FALSE(CVelmString::IsTextCodec(bytes, codec)) << invalid.toStdString();
    }
    texts.clear();
    for (const QString& any :
         listOf(u" | e6b58b20| b2e2c1bf| 41e6b5| b2e2c1| efbbbf4141| eda08020| c0af"_s))
        texts += CVelmString::BytesToString(codecAndBytes(any).second, nullptr);
    EXPECT_EQ(texts, listOf(u"|测 |测量|A|测|AA||蜡"_s));
    EXPECT_EQ(CVelmString::CharsToString("A\0B", 2, nullptr), QString(u"A\0"_s));
}

TEST(StringCodePage, JudgesEveryPairOfBytesByTheStandards)
{
    // RFC 3629, section 4, and GB 18030-2005, clause 5; the last character may be cut off.
    const QRegularExpression utf8(QStringLiteral("\\A([\\x00-\\x7F]|[\\xC2-\\xDF][\\x80-\\xBF])*"
                                                 "([\\xC2-\\xF4]|[\\xE0-\\xF4][\\x80-\\xBF])?\\z"));
    const QRegularExpression gb18030(
        u"\\A([\\x00-\\x7F]|[\\x81-\\xFE][\\x40-\\x7E\\x80-\\xFE])*([\\x81-\\xFE][0-9]?)?\\z"_s);
    for (int pair = 0; pair < 0x10000; ++pair) {
        const QByteArray data = pairOf(pair >> 8, pair) + '\n';
        for (const unsigned int size : {2U, 3U}) {
            const QByteArray part = data.left(static_cast<int>(size));
            const QString bytes(QLatin1String(part.constData(), part.size()));
            SCOPED_TRACE(part.toHex().constData());
            ASSERT_EQ(CVelmString::IsUTF8(part), utf8.match(bytes).hasMatch());
            ASSERT_EQ(CVelmString::IsGBK(part), gb18030.match(bytes).hasMatch());
            ASSERT_EQ(CVelmString::IsUTF8(data.constData(), size), CVelmString::IsUTF8(part));
            ASSERT_EQ(CVelmString::IsGBK(data.constData(), size), CVelmString::IsGBK(part));
        }
    }
}

TEST(StringCodePage, MendsTextThatWasReadInTheWrongOne)
{
    const LocalCodec local("GBK");
    // In UTF-8 "测量" is E6 B5 8B E9 87 8F, in GBK those bytes are 娴 嬮 噺.
    EXPECT_EQ(CVelmString::GBKToUTF8(u"测量"_s), u"娴嬮噺"_s);
    EXPECT_EQ(CVelmString::UTF8ToGBK(u"娴嬮噺"_s), u"测量"_s);
}

TEST(StringPinyin, ReadsEveryGbkCharacterByItsBytes)
{
    // The sum of code point times cell number modulo 2^32. Expected: the same sum over the gb18030
    // codec of Python 3, whose only cell of the table of 2000, A8BC, is replaced by U+1E3F.
    const QString all = cells(0x81, 0xFE, 0x40, 0xFE);
    uint sum = 0;
    for (int i = 0; i < all.size(); ++i)
        sum += all.at(i).unicode() * static_cast<uint>(i + 1);
    EXPECT_EQ(all.size(), 23940);
    EXPECT_EQ(sum, 8440594U);

    CVelmString string;
    const QString area = cells(0xA1, 0xFE, 0xA1, 0xFE);
    const QString syllables = string.getPYStrings(area).join(QLatin1Char(' '));
    // By a Python script from the list of syllables and the ranges of the initials.
    EXPECT_EQ(md5(syllables), "b01214f59d5b1612aa0376b72aadd36d");
    EXPECT_EQ(md5(string.getChineseSpell(area)), "de52a92adb80686cd2617a396e178b0c");

    const QString lowTrails = cells(0xA1, 0xFE, 0x40, 0xA0);
    EXPECT_EQ(string.getPYStrings(lowTrails).count(QString()), 94 * 96);
    const QString lowLeads = cells(0x81, 0xA0, 0x40, 0xFE);
    EXPECT_EQ(lowLeads.size(), 32 * 190);
    EXPECT_EQ(string.getPYString(lowLeads), lowLeads);
    EXPECT_EQ(string.getChineseSpell(lowTrails + lowLeads), QString());
}

TEST(StringPinyin, SpellsNamesAndKeepsWhatIsNotChinese)
{
    const CVelmString original;
    CVelmString string(original);
    EXPECT_EQ(string.getPYString(u"绿Point 中国"_s), u"lvPoint zhongguo"_s);
    EXPECT_EQ(string.getChineseSpell(u"测量point"_s), u"CLpoint"_s);
    // In GBK the first four are 8140, D8A1, A2E3 and A8BC; it does not have the others.
    const QString others = u"丂亍€ḿñ😀\uE7C7\xD800"_s;
    EXPECT_EQ(string.getPYString(others), u"丂zuoaañ😀\uE7C7\xD800"_s);
    EXPECT_EQ(string.getChineseSpell(others), u"ñ😀\uE7C7\xD800"_s);
}
