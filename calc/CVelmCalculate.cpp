#include "CVelmCalculate.h"

#include "common/host/Singleton.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr double kMuPerCentiare = 0.0015;
constexpr double kCentiarePerHectare = 10000;
constexpr double kMuPerHectare = 15;

constexpr int kMostDecimals = std::numeric_limits<double>::max_exponent10;
constexpr int kLongestNumber = (kMostDecimals + 1) + 1 + kMostDecimals;  // figures, point, figures

bool countsAsNegative(double value)
{
    return value <= -1e-12;
}

/// Exact up to 10^22. Multiplied, since the pow() of the two systems need not agree.
double powerOfTen(int decimals)
{
    double power = 1;
    for (int i = 0; i < qMin(decimals, kMostDecimals); ++i)
        power *= 10;
    return power;
}

/// What printf writes with "%.<decimals>f" in the "C" locale, whatever locale is set.
QString printed(double value, int decimals)
{
    char text[kLongestNumber];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed,
                                   qBound(0, decimals, kMostDecimals));
    return QString::fromLatin1(text, static_cast<int>(end.ptr - text));
}

bool isEven(QChar figure)
{
    return (figure.unicode() - '0') % 2 == 0;
}

/// The whole number that the digit rule makes of @p value, which is finite.
double wholeByDigit(double value, double sign, int digit)
{
    const QString text = QStringLiteral("%1").arg(value, 0, 'f', 18, QLatin1Char(' '));
    const QString digitText = QStringLiteral("%1").arg(digit, 0, 10, QLatin1Char(' '));
    const int pos = text.indexOf(QLatin1Char('.'));
    const QString firstDecimal = text.mid(pos + 1, 1);
    const double cutOff = text.left(pos).toDouble();

    const bool isHalf = firstDecimal == digitText && text.midRef(pos + 2, 6).toDouble() < 1e-06;
    if (firstDecimal < digitText || (isHalf && isEven(text.at(pos - 1))))
        return cutOff;
    return cutOff + sign;
}

}  // namespace

CVelmCalculate* CVelmCalculate::Instance()
{
    static velm::detail::Singleton<CVelmCalculate> instance;
    return instance.get([] { return new CVelmCalculate; });
}

CVelmCalculate::CVelmCalculate() = default;

CVelmCalculate::~CVelmCalculate() = default;

double CVelmCalculate::centiareToMu(double m2)
{
    return m2 * kMuPerCentiare;
}

double CVelmCalculate::muToCentiare(double mu)
{
    return mu / kMuPerCentiare;
}

double CVelmCalculate::centiareToHectare(double m2)
{
    return m2 / kCentiarePerHectare;
}

double CVelmCalculate::hectareToCentiare(double ha)
{
    return ha * kCentiarePerHectare;
}

double CVelmCalculate::muToHectare(double mu)
{
    return mu / kMuPerHectare;
}

double CVelmCalculate::hectareToMu(double ha)
{
    return ha * kMuPerHectare;
}

QString CVelmCalculate::format_double(double value, int decimals)
{
    const double scale = powerOfTen(decimals);
    double magnitude = std::fabs(value);
    if (std::isfinite(magnitude * scale))
        magnitude = std::round(magnitude * scale) / scale;
    const QString text = printed(magnitude, decimals);
    return countsAsNegative(value) ? QLatin1Char('-') + text : text;
}

QString CVelmCalculate::getRoundOffString(double m2, int decimals, const Velm::RoundOffType& type,
                                          int digit, Velm::UnitOfAreaType unit)
{
    double value = m2;
    if (unit == Velm::AreaHectare)
        value = centiareToHectare(m2);
    else if (unit == Velm::AreaMu)
        value = centiareToMu(m2);

    const double scale = powerOfTen(decimals);
    if (type == Velm::RoundOffPlain || !std::isfinite(value * scale))
        return format_double(value, decimals);
    const double sign = countsAsNegative(value) ? -1 : 1;
    return format_double(wholeByDigit(value * scale, sign, digit) / scale, decimals);
}

double CVelmCalculate::getRoundOffDouble(double m2, int decimals, const Velm::RoundOffType& type,
                                         int digit, Velm::UnitOfAreaType unit)
{
    return getRoundOffString(m2, decimals, type, digit, unit).toDouble();
}
