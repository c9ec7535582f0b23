#include "common/text/Gb18030.h"

#include "support/Values.h"

#include <gtest/gtest.h>

#include <QTextCodec>

using namespace velm::detail;

namespace {

struct ByteCase
{
    const char* name;
    const char* hex;
    bool gb18030;
    bool gbk;
};

class Gb18030Bytes : public testing::TestWithParam<ByteCase>
{};

}  // namespace

TEST_P(Gb18030Bytes, AreValidByTheStructureOfTheStandard)
{
    const QByteArray data = QByteArray::fromHex(GetParam().hex);
    EXPECT_EQ(isValidGb18030(data), GetParam().gb18030);
    EXPECT_EQ(isValidGbk(data), GetParam().gbk);
}

INSTANTIATE_TEST_SUITE_P(Sequences, Gb18030Bytes,
                         testing::Values(ByteCase{"FirstGroup", "81308130", true, false},
                                         ByteCase{"LastBmpGroup", "8431a439", true, false},
                                         ByteCase{"BehindBmp", "8431a530", false, false},
                                         ByteCase{"BeforePlane1", "8f39fe39", false, false},
                                         ByteCase{"FirstPlane1", "90308130", true, false},
                                         ByteCase{"LastPlane16", "e3329a35", true, false},
                                         ByteCase{"BehindPlane16", "e3329a36", false, false},
                                         ByteCase{"GroupThirdNoLead", "81308030", false, false},
                                         ByteCase{"GroupFourthNoDigit", "81308180", false, false},
                                         ByteCase{"CutGroup", "813081", true, false}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(Gb18030, DecodesTheGroupsBeyondTheBmpByTheirPosition)
{
    // 90308130 is U+10000, and U+20000 stands 65536 groups on, at 95328236 (GB 18030-2005, table
    // D.1).
    EXPECT_EQ(decodeGb18030(QByteArray::fromHex("4190308130")), u"A\U00010000"_s);
    EXPECT_EQ(decodeGb18030(QByteArray::fromHex("95328236b2e2")), u"\U00020000测"_s);
    EXPECT_EQ(decodeGb18030(QByteArray::fromHex("e3329a35")), u"\U0010FFFF"_s);
    EXPECT_EQ(decodeGb18030(QByteArray::fromHex("8431a437")), QString(QChar(0xFFFD)));
    EXPECT_EQ(decodeGb18030(QByteArray::fromHex("b2e2c1")), u"测"_s);
}

TEST(Gb18030, EveryPairIsOneCharacterThatEncodesAsItself)
{
    QTextCodec* const codec = QTextCodec::codecForName("GB18030");
    int cells = 0;
    // The sum of code point times cell number modulo 2^32. Expected: the same sum over the gb18030
    // codec of Python 3, whose only cell of the table of 2000, A8BC, is replaced by U+1E3F.
    uint sum = 0;
    for (int lead = 0x81; lead <= 0xFE; ++lead) {
        for (int trail = 0x40; trail <= 0xFE; ++trail) {
            if (trail == 0x7F)
                continue;
            const QByteArray cell =
                QByteArray(1, static_cast<char>(lead)) + static_cast<char>(trail);
            const QString text = decodeGb18030(cell);
            ASSERT_EQ(text.size(), 1) << cell.toHex().constData();
            ASSERT_EQ(gbkBytes(codec, text.at(0)), cell) << cell.toHex().constData();
            sum += text.at(0).unicode() * static_cast<uint>(++cells);
        }
    }
    EXPECT_EQ(cells, 23940);
    EXPECT_EQ(sum, 8440594U);
}

TEST(Gb18030, SettlesThePairThatMovedInTheTables)
{
    QTextCodec* const codec = QTextCodec::codecForName("GB18030");
    EXPECT_EQ(decodeGb18030(QByteArray::fromHex("a8bc8135f437")),
              QString(QChar(0x1E3F)) + QChar(0xE7C7));
    EXPECT_EQ(gbkBytes(codec, QChar(0xE7C7)), QByteArray());
    EXPECT_EQ(gbkBytes(codec, QChar(0xD800)), QByteArray());
    EXPECT_EQ(gbkBytes(codec, QLatin1Char('a')), QByteArray("a"));
}
