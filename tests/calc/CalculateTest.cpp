#include "CVelmCalculate.h"
#include "support/Values.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>

namespace {

constexpr int kPlain = 0, kByDigit = 1, kMu = 1, kHectare = 2;

QString rounded(double m2, int decimals, int type, int digit = 5, int unit = 0)
{
    return CVelmCalculate::Instance()->getRoundOffString(
        m2, decimals, static_cast<Velm::RoundOffType>(type), digit,
        static_cast<Velm::UnitOfAreaType>(unit));
}

}  // namespace

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
