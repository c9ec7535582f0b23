#include "CVelmCalculate.h"
#include "support/Printers.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

namespace {

constexpr double kPowers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
constexpr int kPlain = 0, kByDigit = 1, kMu = 1, kHectare = 2;

QString rounded(double m2, int decimals, int type, int digit = 5, int unit = 0)
{
    return CVelmCalculate::Instance()->getRoundOffString(
        m2, decimals, static_cast<Velm::RoundOffType>(type), digit,
        static_cast<Velm::UnitOfAreaType>(unit));
}

void countUp(std::string& figures)
{
    figures.insert(0, 1, '0');
    size_t i = figures.size() - 1;
    for (; figures[i] == '9'; --i)
        figures[i] = '0';
    ++figures[i];
    figures.erase(0, figures[0] == '0');
}

/// The figures of the exact binary value, without the point, which may depend on the locale.
std::string figuresOf(double value, int decimals)
{
    char text[64];
    const int size = std::snprintf(text, sizeof text, "%.*f", decimals, value);
    std::string figures(text, static_cast<size_t>(size));
    return decimals ? figures.erase(figures.size() - 1 - size_t(decimals), 1) : figures;
}

/// Rounds on the text: scales once, takes 18 decimals, and compares the first seven of them, as a
/// number, with the half or with the digit; @p digit is -1 for plain rounding.
std::string roundedText(double value, int decimals, int digit = -1)
{
    std::string units = figuresOf(std::fabs(value) * kPowers[decimals], 18);
    const int rest = std::stoi(units.substr(units.size() - 18, 7));
    units.resize(units.size() - 18);
    const int limit = digit * 1000000;
    const bool growsByDigit = rest > limit || (rest == limit && units.back() % 2 != 0);
    if (digit < 0 ? rest >= 5000000 : growsByDigit)
        countUp(units);
    const bool hasSign = value <= -1e-12 && (digit < 0 || units != "0");
    if (units.size() > 15) {  // more figures need not survive the way through a double
        const double result = std::stod(units) / kPowers[decimals];
        if (digit >= 0)
            return roundedText(std::copysign(result, value), decimals);
        units = figuresOf(result, decimals);
    }
    const auto behind = static_cast<size_t>(decimals);
    if (units.size() <= behind)
        units.insert(0, behind + 1 - units.size(), '0');
    return (hasSign ? "-" : "") + (behind ? units.insert(units.size() - behind, 1, '.') : units);
}

/// Numbers of every size below 2^53, decimals that end in 5, exact halves, and values near 1e12.
double someValue(std::mt19937_64& random)
{
    const auto bits = random();
    const auto number = static_cast<double>(static_cast<qint64>(bits >> (11 + random() % 50)));
    const auto chosen = random() % 1024;
    double magnitude = std::ldexp(number, -static_cast<int>(chosen % 50));
    if (bits % 4 == 0)
        magnitude = (std::fmod(number, 1e9) * 10 + 5) / kPowers[1 + chosen % 8];
    else if (bits % 4 == 1)
        magnitude = std::fmod(number, 1e10) / static_cast<double>(2 << chosen % 9);
    else if (bits % 4 == 2)
        magnitude = 1e12 + std::fmod(number, 1e6) / 1024 - 500;
    return chosen >= 512 ? -magnitude : magnitude;
}

}  // namespace

TEST(Calculate, AgreesWithDecimalArithmeticOnTexts)
{
    std::mt19937_64 random(7);
    for (int i = 0; i < 1200000; ++i) {
        const double value = someValue(random);
        const int decimals = static_cast<int>(random() % 9);
        const int chosen = static_cast<int>(random() % 40);
        const int digit = chosen < 10 ? chosen : 5;
        ASSERT_EQ(rounded(value, decimals, kPlain).toStdString(), roundedText(value, decimals));
        ASSERT_EQ(rounded(value, decimals, kByDigit, digit).toStdString(),
                  roundedText(value, decimals, digit))
            << value << " by " << digit;
    }
}

TEST(Calculate, RoundsWhatLooksOdd)
{
    struct Case
    {
        double value;
        int decimals, digit;
        const char *byDigit, *plain;
    };
    const int least = std::numeric_limits<int>::min();
    for (const Case& c : {Case{2.25, 1, 5, "2.2", "2.3"},
                          {2.35, 1, 5, "2.4", "2.4"},
                          {2.26, 1, 5, "2.3", "2.3"},
                          {2.250000001, 1, 5, "2.2", "2.3"},
                          {2.25000001, 1, 5, "2.3", "2.3"},
                          {-2.35, 1, 5, "-2.4", "-2.4"},
                          {-0.04, 1, 5, "0.0", "-0.0"},
                          {-0.0, 1, 5, "0.0", "0.0"},
                          {-1e-12, 0, -1, "-1", "-0"},
                          {-9e-13, 0, -1, "1", "0"},
                          {2.1, 0, 10, "2", "2"},
                          {2.2, 0, 10, "3", "2"},
                          {2.5, 0, 45, "3", "3"},
                          {0.49999999999999994, 0, 5, "0", "0"},
                          {-2.5, least, 5, "-2", "-3"},
                          {-HUGE_VAL, 1, 5, "-inf", "-inf"},
                          {HUGE_VAL, 400, 5, "inf", "inf"},
                          {-NAN, 1, 5, "nan", "nan"}}) {
        EXPECT_EQ(rounded(c.value, c.decimals, kByDigit, c.digit), QString::fromLatin1(c.byDigit));
        EXPECT_EQ(rounded(c.value, c.decimals, -7, c.digit), QString::fromLatin1(c.byDigit));
        EXPECT_EQ(rounded(c.value, c.decimals, kPlain), QString::fromLatin1(c.plain));
    }
}

TEST(Calculate, PrintsHugeNumbersAndManyDecimals)
{
    const int most = std::numeric_limits<int>::max();
    for (const int type : {kPlain, kByDigit}) {
        EXPECT_EQ(rounded(0.5, most, type), u"0.5"_s + QString(307, u'0'));
        for (const double value : {1e300, -std::numeric_limits<double>::max()})
            EXPECT_EQ(rounded(value, most, type).toDouble(), value);
    }
}

TEST(Calculate, WritesAPointInEveryLocale)
{
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* name : {"de_DE.UTF-8", "German_Germany.1252"})  // one on each system
        std::setlocale(LC_NUMERIC, name);
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(rounded(1234.5, 1, kPlain) + rounded(1234.25, 1, kByDigit), u"1234.51234.2"_s);
    QLocale::setDefault(QLocale::c());
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(Calculate, ConvertsUnits)
{
    CVelmCalculate& c = *CVelmCalculate::Instance();
    for (const auto& [value, expected] : {std::pair{c.centiareToMu(10000), 15.0},
                                          {c.muToCentiare(15), 10000.0},
                                          {c.centiareToHectare(25000), 2.5},
                                          {c.hectareToCentiare(2.5), 25000.0},
                                          {c.muToHectare(7.5), 0.5},
                                          {c.hectareToMu(1), 15.0}})
        EXPECT_DOUBLE_EQ(value, expected);
    EXPECT_EQ(c.format_double(c.muToCentiare(1), 2), u"666.67"_s);
    EXPECT_EQ(rounded(667, 4, kPlain, 5, kMu), u"1.0005"_s);
    EXPECT_EQ(rounded(22500, 1, kByDigit, 5, kHectare), u"2.2"_s);
    EXPECT_EQ(rounded(22500, 1, kByDigit, 5, 3), u"22500.0"_s);
    EXPECT_EQ(c.getRoundOffDouble(-22500, 1, Velm::RoundOffByDigit, 5, Velm::AreaHectare), -2.2);
}
