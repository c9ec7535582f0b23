#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QString>

/// Land areas: conversion between square metres, mu and hectares, and rounding to a number of
/// decimals, plainly or by the digit rule of official area figures.
/// Holds no state, so every operation may be called from any thread, and none depends on the locale
/// that the host has set: the point is always ".". Both systems give the same texts.
class VELMCOMMON_EXPORT CVelmCalculate
{
public:
    /// Created on the first call, destroyed at the end of the process.
    static CVelmCalculate* Instance();
    virtual ~CVelmCalculate();

    // --- Units. 1 mu is exactly 1/0.0015 square metres, 1 hectare exactly 15 mu.

    double centiareToMu(double m2);       ///< m2 * 0.0015
    double muToCentiare(double mu);       ///< mu / 0.0015
    double centiareToHectare(double m2);  ///< m2 / 10000
    double hectareToCentiare(double ha);  ///< ha * 10000
    double muToHectare(double mu);        ///< mu / 15
    double hectareToMu(double ha);        ///< ha * 15

    // --- Rounding
    // Values are scaled by 10 to the power of the decimals in binary floating point, and what is a
    // half is decided on that product: 1.005 with two decimals scales to 100.49999999999999 and
    // becomes "1.00", 2.35 with one to 23.5 exactly.
    // Decimals below 0 count as 0, those above 308 as 308: a double holds no greater power of ten.

    /// @p value with @p decimals decimals, halves away from zero. A value of which so many decimals
    /// cannot be scaled within a double is printed as it stands.
    /// A value up to and including -1e-12 keeps its sign even if all digits are 0: -0.001 with two
    /// decimals is "-0.00". One between -1e-12 and 0 has none, whatever its digits.
    /// @return "nan", "inf" or "-inf" for what is not finite
    QString format_double(double value, int decimals);

    /// The area @p m2, in square metres, as a number of @p unit with @p decimals decimals.
    /// RoundOffPlain rounds like format_double(). Every other type follows the digit rule, which
    /// looks at the first decimal that goes: below @p digit the number is cut off towards zero,
    /// otherwise the last decimal that stays grows by one, away from zero; but if the first one is
    /// @p digit, the six behind it are 0 and the last that stays is even, the number is cut off
    /// too. With 5 an exact half thus becomes even: 2.25 with one decimal is "2.2", 2.35 is
    /// "2.4", 2.26 is "2.3".
    ///
    /// Three things look odd and stay, since areas printed before have to come out the same:
    /// - No more than those six decimals tell a half: 2.250000001 is "2.2" too.
    /// - The decimal and @p digit are compared as texts. With a digit of two figures a decimal that
    ///   equals its first figure is below it; with a negative one every number grows.
    /// - A negative number that is cut off to 0 has no sign ("0.0"; format_double() gives "-0.0"),
    ///   and one between -1e-12 and 0 grows towards positive numbers.
    QString getRoundOffString(double m2, int decimals, const Velm::RoundOffType& type, int digit,
                              Velm::UnitOfAreaType unit);

    /// The number that getRoundOffString() shows.
    double getRoundOffDouble(double m2, int decimals, const Velm::RoundOffType& type, int digit,
                             Velm::UnitOfAreaType unit);

private:
    CVelmCalculate();
    Q_DISABLE_COPY(CVelmCalculate)
};
