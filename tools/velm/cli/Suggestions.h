#pragma once

#include <QStringList>

/// Those of @p candidates that @p text may have been meant as, the likeliest first, three at most:
/// two slips away at the most, and fewer than half of its characters, where a slip is a character
/// too much, too few or another one, or two swapped. Letter case does not count; where only that
/// differs, nothing else is likely.
QStringList similarTo(const QString& text, const QStringList& candidates);

/// The same with the words of didYouMean(). Among very many candidates nothing is looked for.
QString suggestionAmong(const QString& text, const QStringList& candidates);

/// "; did you mean "a", "b" or "c"?", or nothing.
QString didYouMean(const QStringList& suggestions);
