#pragma once

#include <QString>

/// Whether a character is one that nobody sees: NUL, a tab, a line break, a mark of the order of
/// bytes, a soft hyphen and their like.
bool isControl(QChar ch);

/// A name without control characters and without blanks at its ends: what somebody means who has
/// typed one of them by accident.
QString plainName(const QString& name);

/// Whether a text has nothing that anybody sees.
bool isBlank(const QString& text);

/// What is told of such a text.
QString emptyOrBlank(const QString& text);
