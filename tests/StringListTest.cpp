#include "CVelmString.h"
#include "support/Printers.h"

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

QString utf8(const char* text)
{
    return QString::fromUtf8(text);
}

QString joined(const QVector<long>& values)
{
    QStringList texts;
    for (const long value : values)
        texts.append(QString::number(value));
    return texts.join(QLatin1Char(' '));
}

/// The limits of long, what lies close to them and to the powers of ten, and numbers of every size.
QVector<long> numbersOfAllSizes()
{
    QVector<long> numbers{0, kGreatest, kGreatest - 1, kLeast, kLeast + 1};
    for (long power = 10; power <= kGreatest / 10; power *= 10)
        numbers += {power - 1, power, power + 1, power * 10 / 3, -power};
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i)
        numbers += static_cast<long>(static_cast<qint64>(random()) >> (i % 64));
    return numbers;
}

/// The first 17 characters and the check character of ISO 7064 MOD 11-2, by that standard's
/// recursive method.
QString withCheckCharacter(const QString& digits)
{
    int remainder = 0;
    for (const QChar digit : digits)
        remainder = (remainder + digit.digitValue()) * 2 % 11;
    return digits + QStringLiteral("0123456789X").at((12 - remainder) % 11);
}

struct SplitCase
{
    const char* text;
    const char* separator;
    bool keepLeading;
    const char* parts;
};

struct RangeCase
{
    const char* text;
    const char* values;
};

struct FreeNumberCase
{
    QVector<long> used;
    std::optional<long> start;
    std::optional<long> free;
};

}  // namespace

TEST(StringValidation, CountsAndRecognisesCharacters)
{
    for (const char* digits : {"", "0", "--1.2.3", "-.", "0123456789"})
        EXPECT_TRUE(CVelmString::IsDigitStr(utf8(digits))) << digits;
    for (const char* other : {"1e5", "+1", " 1", "1,0", "１", "一", "ı"})
        EXPECT_FALSE(CVelmString::IsDigitStr(utf8(other))) << other;
    // Cyrillic shha with descender is the first that counts, U+FFFD the last.
    EXPECT_EQ(CVelmString::ChineseCount(utf8("1点aА, é，ど\u04BA\u04BB\uFFFD") + QChar(0xFFFE)), 5);
    EXPECT_EQ(CVelmString::GetNumberOfSymbol(utf8("a;;b"), utf8(";")), 2U);
    EXPECT_EQ(CVelmString::GetNumberOfSymbol(utf8("aaaaa"), utf8("aa")), 2U);
    EXPECT_EQ(CVelmString::GetNumberOfSymbol(utf8("ab"), utf8("B")), 0U);
    EXPECT_EQ(CVelmString::GetNumberOfSymbol(utf8("ab"), QString()), 0U);
}

TEST(StringValidation, KnowsTheDaysOfTheCalendar)
{
    for (int year = 1; year < 2420; year += year < 1880 ? 97 : 1) {
        for (int month = 0; month <= 13; ++month) {
            for (int day = -1; day <= 32; ++day) {
                const bool unknownDay = day == 0 && month >= 1 && month <= 12;
                ASSERT_EQ(CVelmString::CheckDate(QString::number(year), QString::number(month),
                                                 QString::number(day)),
                          unknownDay || QDate::isValid(year, month, day))
                    << year << '-' << month << '-' << day;
            }
        }
    }
    EXPECT_TRUE(CVelmString::CheckDate(utf8("1999"), utf8("02"), utf8("day")));
    EXPECT_FALSE(CVelmString::CheckDate(utf8("1999"), utf8("February"), utf8("1")));
}

TEST(StringValidation, AcceptsIdentityNumbersByRegionDateAndCheckCharacter)
{
    // The examples of GB 11643-1999.
    EXPECT_TRUE(CVelmString::CheckIDCard18(utf8("11010519491231002X")));
    EXPECT_TRUE(CVelmString::CheckIDCard18(utf8("440524188001010014")));
    const QString regions = utf8("11 12 13 14 15 21 22 23 31 32 33 34 35 36 37 41 42 43 44 45 46 "
                                 "50 51 52 53 54 61 62 63 64 65 71 81 82 91");
    for (int i = 0; i < 1000; ++i) {
        const QString region = QString::number(i % 100).rightJustified(2, QLatin1Char('0'));
        const QString id = withCheckCharacter(region + QString::number(197019991231000LL + i * 37));
        ASSERT_EQ(CVelmString::CheckIDCard18(id), regions.contains(region)) << id.toStdString();
        for (const QChar check : QStringLiteral("0123456789Xx")) {
            ASSERT_EQ(CVelmString::CheckIDCard18(id.left(17) + check),
                      regions.contains(region) && check == id.at(17));
        }
    }
}

TEST(StringValidation, RefusesIdentityNumbersOfAnotherForm)
{
    EXPECT_FALSE(CVelmString::CheckIDCard18(utf8("44052418800101001")));
    EXPECT_FALSE(CVelmString::CheckIDCard18(utf8("4405241880010100144")));
    EXPECT_FALSE(CVelmString::CheckIDCard18(withCheckCharacter(utf8("44052418801301001"))));
    EXPECT_FALSE(CVelmString::CheckIDCard18(withCheckCharacter(utf8("44052419000229001"))));
    EXPECT_TRUE(CVelmString::CheckIDCard18(withCheckCharacter(utf8("44052418800100001"))));
    // "%" is eleven places before "0", so in place of it it leaves the remainder as it is, though
    // the sum is negative.
    EXPECT_TRUE(CVelmString::CheckIDCard18(withCheckCharacter(utf8("11000020000101000"))
                                               .replace(2, 4, utf8("%%%%"))
                                               .replace(14, 3, utf8("%%%"))));
}

TEST(StringList, SplitsAtSeparators)
{
    for (const SplitCase& c :
         {SplitCase{"a,b,,c", ",", true, "a|b|,c"}, SplitCase{"a,", ",", true, "a|"},
          SplitCase{",a,b", ",", true, ",a|b"}, SplitCase{"-3-6", "-", true, "-3|6"},
          SplitCase{",,a", ",", true, ",,a"}, SplitCase{",,,a", ",", true, ",,|a"},
          SplitCase{"a--b--c", "--", true, "a|-b|-c"}, SplitCase{"aXbxc", "x", true, "aXb|c"},
          SplitCase{"", ",", true, ""}, SplitCase{"a,b,,c,", ",", false, "a|b||c|"},
          SplitCase{"aXbxc", "x", false, "aXb|c"}, SplitCase{"", ",", false, ""}}) {
        EXPECT_EQ(CVelmString::String2StringList(utf8(c.text), utf8(c.separator), c.keepLeading),
                  utf8(c.parts).split(QLatin1Char('|')))
            << c.text;
    }
    EXPECT_EQ(CVelmString::SplitString(utf8(",aXb,,cxd,"), utf8(",")),
              QStringList({utf8("aXb"), utf8("cxd")}));
    EXPECT_EQ(CVelmString::String2StringList(utf8("abc"), QString(), true).join(QString()),
              utf8("ab"));
}

TEST(StringList, ExpandsRanges)
{
    for (const RangeCase& c :
         {RangeCase{"1,3-6,9", "1 3 4 5 6 9"}, RangeCase{"6-3", "6 5 4 3"},
          RangeCase{"1-3-5", "1 2 3 4 5"}, RangeCase{"2-2", "2"}, RangeCase{"-3--1", "-3 -2 -1"},
          RangeCase{"5-3-4-4", "5 4 3 4"}, RangeCase{"7,x,1-b,8", "7 8"}, RangeCase{"", "0"},
          RangeCase{"1-3-a-5-6", "1 2 3 5 6"}, RangeCase{"a-1-2", "1 2"},
          RangeCase{"4,0-2147483647,5", "4 5"}, RangeCase{"1-2-2147483647--2", "1 2"},
          RangeCase{"4,1-2000000000,5", "4 5"}}) {
        EXPECT_EQ(joined(CVelmString::String2LongList(utf8(c.text), utf8("-"), utf8(","))),
                  utf8(c.values))
            << c.text;
    }
    EXPECT_EQ(joined(CVelmString::StringList2LongList({utf8("3~1"), utf8("x"), utf8("-8;9")},
                                                      utf8("~"), utf8(";"))),
              utf8("3 2 1 -8 9"));
    EXPECT_TRUE(CVelmString::StringList2LongList({}, utf8("-"), utf8(",")).isEmpty());
}

TEST(StringList, CompressesRangesThatExpandToTheSameNumbers)
{
    const auto compressed = [](const QVector<long>& values) {
        return CVelmString::LongList2String(values, utf8("~"), utf8(";"));
    };
    EXPECT_EQ(compressed({}), QString());
    EXPECT_EQ(compressed({7}), utf8("7"));
    EXPECT_EQ(compressed({9, 3, 2, 1, 5, 6, -1}), utf8("-1;1~3;5~6;9"));
    EXPECT_EQ(compressed({1, 2, 2, 3}), utf8("1~2;2~3"));
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        QVector<long> values{kGreatest, kGreatest - 1, kLeast, kLeast + 1};
        for (int i = 0; i < round; ++i)
            values.append(static_cast<long>(random() % 400) - 200);
        const QString text = compressed(values);
        std::sort(values.begin(), values.end());
        ASSERT_EQ(CVelmString::String2LongList(text, utf8("~"), utf8(";")), values)
            << text.toStdString();
    }
}

TEST(StringNumber, FindsTheFreeNumber)
{
    for (const FreeNumberCase& c :
         {FreeNumberCase{{1, 2, 3, 5}, {}, 4}, FreeNumberCase{{1, 2, 3, 5}, 0, 0},
          FreeNumberCase{{1, 2, 3, 5}, 10, 6}, FreeNumberCase{{9, 5, 3, 4, 3}, 8, 6},
          FreeNumberCase{{4, 4, 3}, {}, 5}, FreeNumberCase{{7}, 7, 8},
          FreeNumberCase{{-3, -1}, {}, -2}, FreeNumberCase{{}, 4, 4}, FreeNumberCase{{}, {}, {}},
          FreeNumberCase{{kLeast, kGreatest}, {}, kLeast + 1},
          FreeNumberCase{{kGreatest - 1}, kGreatest, kGreatest}, FreeNumberCase{{kGreatest}, 5, 5},
          FreeNumberCase{{kGreatest}, kGreatest, {}}}) {
        long result = 77;
        std::optional<long> start = c.start;
        EXPECT_EQ(CVelmString::FindSkipNum(result, c.used, start ? &*start : nullptr),
                  c.free.has_value());
        EXPECT_EQ(result, c.free.value_or(77)) << joined(c.used).toStdString();
        EXPECT_EQ(start, c.start);
    }
}

TEST(StringNumber, WritesDoublesShortlyAndWithAPrecision)
{
    const std::pair<double, const char*> texts[]{
        {2.5, "2.5"},
        {3.0, "3"},
        {100.0, "100"},
        {-0.25, "-0.25"},
        {0.1 + 0.2, "0.3"},
        {1e-20, "0"},
        {1e-15, "0.000000000000001"},
        {1e22, "10000000000000000000000"},
        {123456.789, "123456.789000000004307"},  // what the nearest double really is
        {HUGE_VAL, "inf"},
        {-HUGE_VAL, "-inf"},
        {std::nan(""), "nan"}};
    for (const auto& [value, text] : texts)
        EXPECT_EQ(CVelmString::Double2QString(value), utf8(text));
    EXPECT_EQ(
        CVelmString::DoubleList2StringList({1.00009, -1.00011, 2.99999, -0.00005, 7, -1.5, 4e9}, 4),
        utf8("1|-1.0001|3.0000|0|7|-1.5000|4000000000").split(QLatin1Char('|')));
    EXPECT_EQ(CVelmString::StringList2DoubleList({utf8("1.5e2"), utf8("x"), QString(), utf8("-2")}),
              QVector<double>({150.0, 0.0, 0.0, -2.0}));
}

TEST(StringNumber, ReadsAsInChinese)
{
    const std::pair<long, const char*> readings[]{
        {0, "零"},
        {10, "十"},
        {12, "十二"},
        {20, "二十"},
        {101, "一百零一"},
        {110, "一百一十"},
        {1001, "一千零一"},
        {1010, "一千零一十"},
        {-5, "负五"},
        {10001, "一万零一"},
        {11000, "一万一千"},
        {100000, "十万"},
        {100010, "十万零一十"},
        {-1200000, "负一百二十万"},
        {100000001, "一亿零一"},
        {100010000, "一亿零一万"},
        {2147483647, "二十一亿四千七百四十八万三千六百四十七"}};
    for (const auto& [number, reading] : readings)
        EXPECT_EQ(CVelmString::Number2Chinese(number), utf8(reading)) << number;
    for (long number = 0; number <= 20000; ++number)
        ASSERT_EQ(CVelmString::Chinese2Number(CVelmString::Number2Chinese(number)), number);
    for (const long number : numbersOfAllSizes())
        ASSERT_EQ(CVelmString::Chinese2Number(CVelmString::Number2Chinese(number)), number);
}

TEST(StringNumber, TakesDecimalsAndOtherReadingsThatFit)
{
    const std::pair<const char*, qint64> numbers[]{{"-12", -12},
                                                   {"一十二", 12},
                                                   {"三十亿", 3000000000},
                                                   {"-3000000000", -3000000000},
                                                   {"一万零二亿", 1000200000000},
                                                   {"九百二十三亿亿", 0},
                                                   {"99999999999999999999", 0},
                                                   {"", 0},
                                                   {"负", 0},
                                                   {"一二", 0},
                                                   {"百", 0},
                                                   {"二b", 0},
                                                   {"1万", 0},
                                                   {"负负一", 0}};
    for (const auto& [text, number] : numbers) {
        const bool fits = number >= kLeast && number <= kGreatest;
        EXPECT_EQ(CVelmString::Chinese2Number(utf8(text)), fits ? number : 0) << text;
    }
}

TEST(StringNumber, CountsInColumnLetters)
{
    // XFD is the last column of a spreadsheet of 2^14 columns.
    const std::pair<long, const char*> columns[]{{1, "A"},
                                                 {26, "Z"},
                                                 {27, "AA"},
                                                 {702, "ZZ"},
                                                 {703, "AAA"},
                                                 {16384, "XFD"},
                                                 {2147483647, "FXSHRXW"}};
    for (const auto& [number, letters] : columns) {
        EXPECT_EQ(CVelmString::Number2EnglishLetters(number, true), utf8(letters));
        EXPECT_EQ(CVelmString::Number2EnglishLetters(number, false), utf8(letters).toLower());
        EXPECT_EQ(CVelmString::EnglishLetters2Number(utf8(letters).toLower()), number);
    }
    for (const long number : numbersOfAllSizes()) {
        const QString letters = CVelmString::Number2EnglishLetters(number, true);
        ASSERT_EQ(CVelmString::EnglishLetters2Number(letters), std::max(number, 0L)) << number;
    }
    for (const char* other : {"", "a1", "1", "中", "A B", "@", "[", "ZZZZZZZZZZZZZZZZZZZZ"})
        EXPECT_EQ(CVelmString::EnglishLetters2Number(utf8(other)), 0) << other;
}
