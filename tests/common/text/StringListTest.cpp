#include "CVelmString.h"
#include "support/StarvedMemory.h"
#include "support/Values.h"

#include <gtest/gtest.h>

#include <QDate>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <random>

namespace {

constexpr long kGreatest = std::numeric_limits<long>::max();
constexpr long kLeast = std::numeric_limits<long>::min();

using Range = std::pair<const char*, QVector<long>>;

struct Used
{
    QVector<long> used;
    std::optional<long> start, free;
};

/// The limits of long, the neighbours of the powers of ten, and numbers of every size.
QVector<long> numbersOfAllSizes()
{
    QVector<long> numbers{kGreatest, kGreatest - 1, kLeast, kLeast + 1};
    for (long power = 10; power <= kGreatest / 10; power *= 10)
        numbers += {power - 1, power, power + 1, power * 10 / 3, -power};
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i)
        numbers += static_cast<long>(static_cast<qint64>(random()) >> (i % 64));
    return numbers;
}

/// Appends the check character of ISO 7064 MOD 11-2 by that standard's recursive method.
QString identity(const QString& digits)
{
    int remainder = 0;
    for (const QChar digit : digits)
        remainder = (remainder + digit.digitValue()) * 2 % 11;
    return digits + u"0123456789X"_s.at((12 - remainder) % 11);
}

}  // namespace

TEST(StringValidation, CountsAndRecognisesCharacters)
{
    for (const QString& text : listOf(u"|0|--1.2.3|-.|0123456789"_s))
        EXPECT_TRUE(CVelmString::IsDigitStr(text)) << text.toStdString();
    for (const QString& text : listOf(u"1e5|+1| 1|1,0|１|一"_s))
        EXPECT_FALSE(CVelmString::IsDigitStr(text)) << text.toStdString();
    EXPECT_EQ(CVelmString::ChineseCount(u"1点é，\u04BA\u04BB\uFFFD\uFFFE"_s), 4);
    EXPECT_EQ(CVelmString::GetNumberOfSymbol(u"a;;b"_s, u";"_s), 2U);
    EXPECT_EQ(CVelmString::GetNumberOfSymbol(u"aaaaa"_s, u"aa"_s), 2U);
    EXPECT_EQ(CVelmString::GetNumberOfSymbol(u"ab"_s, u"B"_s), 0U);
    EXPECT_EQ(CVelmString::GetNumberOfSymbol(u"ab"_s, QString()), 0U);
}

TEST(StringValidation, KnowsTheDaysOfTheCalendar)
{
    for (QDate date(1895, 1, 1); date.year() < 2405; date = date.addMonths(1)) {
        const QString year = date.toString(u"yyyy"_s);
        for (int day = -1; day <= 32; ++day) {
            // Day 0 stands for an unknown one.
            ASSERT_EQ(CVelmString::CheckDate(year, date.toString(u"M"_s), QString::number(day)),
                      day >= 0 && day <= date.daysInMonth());
        }
    }
    for (const QString& month : listOf(u"0|13|-1|May|"_s))
        EXPECT_FALSE(CVelmString::CheckDate(u"1999"_s, month, u"1"_s)) << month.toStdString();
    EXPECT_TRUE(CVelmString::CheckDate(u"1999"_s, u"02"_s, u"unknown"_s));
}

TEST(StringValidation, AcceptsIdentityNumbersByRegionDateAndCheckCharacter)
{
    // The examples of GB 11643-1999.
    EXPECT_TRUE(CVelmString::CheckIDCard18(u"11010519491231002X"_s));
    EXPECT_TRUE(CVelmString::CheckIDCard18(u"440524188001010014"_s));
    const QString regions = "11 12 13 14 15 21 22 23 31 32 33 34 35 36 37 41 42 43 44 45 46 50 51 "
                            u"52 53 54 61 62 63 64 65 71 81 82 91"_s;
    for (int i = 0; i < 1000; ++i) {
        const QString region = QString::number(i % 100).rightJustified(2, QLatin1Char('0'));
        const QString date = QDate(1930, 1, 1).addDays(i * 31).toString(u"yyyyMMdd"_s);
        const QString id = identity(region + u"0102"_s + date + QString::number(999 - i % 900));
        for (const QChar last : u"0123456789Xx"_s) {
            ASSERT_EQ(CVelmString::CheckIDCard18(id.left(17) + last),
                      regions.contains(region) && last == id.at(17))
                << id.toStdString();
        }
    }
    for (const QString& other :
         {u"44052418800101001"_s, u"4405241880010100144"_s, identity(u"44052418801301001"_s),
          identity(u"44052419000229001"_s)})
        EXPECT_FALSE(CVelmString::CheckIDCard18(other)) << other.toStdString();
    EXPECT_TRUE(CVelmString::CheckIDCard18(identity(u"44052418800100001"_s)));
    // "%" lies eleven before "0", so the remainder stays, though the sum becomes negative.
    const QString zeros = identity(u"11000020000101000"_s);
    EXPECT_TRUE(CVelmString::CheckIDCard18(zeros.left(2) + u"%%%%20000101%%%"_s + zeros.right(1)));
}

TEST(StringList, SplitsAtSeparators)
{
    QStringList scanned;
    for (const QString& text : listOf(u"a,b,,c|a,|,a,b|,,a|,,,a|"_s))
        scanned.append(CVelmString::String2StringList(text, u","_s, true).join(QLatin1Char(' ')));
    EXPECT_EQ(scanned, listOf(u"a b ,c|a |,a b|,,a|,, a|"_s));
    EXPECT_EQ(CVelmString::String2StringList(u"aXXbxxc"_s, u"xx"_s, true), listOf(u"aXXb|xc"_s));
    EXPECT_EQ(CVelmString::String2StringList(u"abc"_s, QString(), true), listOf(u"ab|"_s));
    EXPECT_EQ(CVelmString::String2StringList(u"x,aXb,xc"_s, u"x"_s, false), listOf(u"|,aXb,|c"_s));
    EXPECT_EQ(CVelmString::SplitString(u"xaXbxxcx"_s, u"x"_s), listOf(u"aXb|c"_s));
}

TEST(StringList, ExpandsRanges)
{
    for (const auto& [text, values] :
         {Range{"1,3-6,9", {1, 3, 4, 5, 6, 9}}, Range{"6-3", {6, 5, 4, 3}},
          Range{"1-3-5", {1, 2, 3, 4, 5}}, Range{"-3--1", {-3, -2, -1}}, Range{"2-2", {2}},
          Range{"5-3-4-4", {5, 4, 3, 4}}, Range{"7,x,1-b,8", {7, 8}}, Range{"", {0}},
          Range{"a-1-2", {1, 2}}, Range{"1-3-a-5-6", {1, 2, 3, 5, 6}},
          Range{"4,0-2147483647,5", {4, 5}}, Range{"1-2--2147483645", {1, 2}},
          Range{"5,0-2147483646,6", {5, 6}}, Range{"4,1-16777216,5", {4, 5}},
          Range{"1-3-16777217,7", {1, 2, 3, 7}}, Range{"1-2-2-1", {1, 2, 1}}}) {
        EXPECT_EQ(CVelmString::String2LongList(QString::fromLatin1(text), u"-"_s, u","_s), values)
            << text;
    }
    EXPECT_EQ(CVelmString::StringList2LongList({u"3~1"_s, u"x"_s, u"-8;9"_s}, u"~"_s, u";"_s),
              QVector<long>({3, 2, 1, -8, 9}));
    constexpr int kMost = 16777216;
    for (const QStringList& full :
         {QStringList{u"1-3-16777216"_s}, {u"1-16777216"_s, u"5"_s, u"6-7"_s}}) {
        const QVector<long> values = CVelmString::StringList2LongList(full, u"-"_s, u","_s);
        EXPECT_EQ(values.size(), kMost) << "a start that is there already stands there once";
        EXPECT_EQ(values.last(), kMost) << full.size();
    }
}

TEST(StringList, CompressesRangesThatExpandToTheSameNumbers)
{
    EXPECT_EQ(CVelmString::LongList2String({9, 3, 2, 1, -1, 5, 2}, u"~"_s, u";"_s),
              u"-1;1~2;2~3;5;9"_s);
    EXPECT_EQ(CVelmString::LongList2String({}, u"~"_s, u";"_s), QString());
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        QVector<long> values{kGreatest, kGreatest - 1, kLeast, kLeast + 1};
        for (int i = 0; i < round; ++i)
            values.append(static_cast<long>(random() % 400) - 200);
        const QStringList texts = CVelmString::LongList2StringList(values, u"~"_s);
        std::sort(values.begin(), values.end());
        ASSERT_EQ(CVelmString::StringList2LongList(texts, u"~"_s, u";"_s), values);
    }
}

TEST(StringNumber, FindsAFreeOne)
{
    for (const Used& c :
         {Used{{1, 2, 3, 5}, {}, 4}, Used{{1, 2, 3, 5}, 0, 0}, Used{{1, 2, 3, 5}, 10, 6},
          Used{{9, 5, 3, 4, 3}, 8, 6}, Used{{4, 4, 3}, {}, 5}, Used{{7}, 7, 8},
          Used{{-3, -1}, {}, -2}, Used{{}, 4, 4}, Used{{}, {}, {}},
          Used{{kLeast, kGreatest}, {}, kLeast + 1}, Used{{kGreatest - 1}, kGreatest, kGreatest},
          Used{{kGreatest}, 5, 5}, Used{{kGreatest}, kGreatest, {}}}) {
        long result = 77;
        std::optional<long> start = c.start;
        EXPECT_EQ(CVelmString::FindSkipNum(result, c.used, start ? &*start : nullptr),
                  c.free.has_value());
        EXPECT_EQ(result, c.free.value_or(77)) << testing::PrintToString(c.used);
    }
}

TEST(StringNumber, IsWrittenShortlyAndWithAPrecision)
{
    QStringList texts;
    for (const double value :
         {2.5, 100.0, -0.25, 0.1 + 0.2, 1e-20, 1e-15, 1e22, 123456.789, -HUGE_VAL})
        texts.append(CVelmString::Double2QString(value));
    // The last but one is what the nearest double really is.
    EXPECT_EQ(texts, listOf("2.5|100|-0.25|0.3|0|0.000000000000001|10000000000000000000000|"
                            u"123456.789000000004307|-inf"_s));
    EXPECT_EQ(CVelmString::DoubleList2StringList({1.00009, -1.00011, 2.99999, -0.00005, 7, 4e9}, 4),
              listOf(u"1|-1.0001|3.0000|0|7|4000000000"_s));
    EXPECT_EQ(CVelmString::StringList2DoubleList(listOf(u"1.5e2|x||-2"_s)),
              QVector<double>({150.0, 0.0, 0.0, -2.0}));
}

TEST(StringNumber, IsReadInChinese)
{
    const QVector<long> known{0,      10,       12,        20,        101,       110,
                              1001,   1010,     -5,        10001,     11000,     100000,
                              100010, -1200000, 100000001, 100010000, 2147483647};
    QStringList readings;
    for (const long number : known)
        readings.append(CVelmString::Number2Chinese(number));
    EXPECT_EQ(readings,
              listOf("零|十|十二|二十|一百零一|一百一十|一千零一|一千零一十|负五|一万零一|"
                     "一万一千|十万|十万零一十|负一百二十万|一亿零一|一亿零一万|"
                     u"二十一亿四千七百四十八万三千六百四十七"_s));
    QVector<long> numbers = numbersOfAllSizes();
    for (long number = 0; number <= 20000; ++number)
        numbers.append(number);
    for (const long number : numbers)
        ASSERT_EQ(CVelmString::Chinese2Number(CVelmString::Number2Chinese(number)), number);

    const bool wide = sizeof(long) > 4;
    EXPECT_EQ(CVelmString::Chinese2Number(u"一十二"_s), 12);
    EXPECT_EQ(CVelmString::Chinese2Number(u"-3000000000"_s), wide ? -3000000000 : 0);
    EXPECT_EQ(CVelmString::Chinese2Number(u"三十亿"_s), wide ? 3000000000 : 0);
    EXPECT_EQ(CVelmString::Chinese2Number(u"一万零二亿"_s), wide ? 1000200000000 : 0);
    for (const QString& text :
         listOf(u"九百二十三亿亿|99999999999999999999||负|一二|百|二b|1万|负负一"_s))
        EXPECT_EQ(CVelmString::Chinese2Number(text), 0) << text.toStdString();
}

TEST(StringNumber, IsCountedInColumnLetters)
{
    const auto letters = [](long number) {
        return CVelmString::Number2EnglishLetters(number, true);
    };
    // XFD is the last of a spreadsheet's 2^14 columns.
    EXPECT_EQ(letters(16384) + letters(26) + letters(27) + letters(0), u"XFDZAA"_s);
    EXPECT_EQ(CVelmString::Number2EnglishLetters(2147483647, false), u"fxshrxw"_s);
    EXPECT_EQ(CVelmString::EnglishLetters2Number(u"fxsHRXW"_s), 2147483647);
    for (const long number : numbersOfAllSizes())
        ASSERT_EQ(CVelmString::EnglishLetters2Number(letters(number)), std::max(number, 0L));
    for (const QString& other : listOf(u"a1|中|A B|A@|A[|ZZZZZZZZZZZZZZZZ"_s))
        EXPECT_EQ(CVelmString::EnglishLetters2Number(other), 0) << other.toStdString();
}

TEST(StringList, IsEmptyWhereMemoryRunsOut)
{
    if (!StarvedMemory::isPossible())
        GTEST_SKIP();
    const QString text = u"1-100000,7-90000"_s;
    bool failed = true;
    for (int which = 1; failed; ++which) {
        const StarvedMemory starved(100000, which);
        const QVector<long> values = CVelmString::String2LongList(text, u"-"_s, u","_s);
        failed = starved.hasFailed();
        EXPECT_EQ(values.size(), failed ? 0 : 189994);
    }
}
