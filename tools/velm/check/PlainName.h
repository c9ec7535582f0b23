#pragma once

#include <QString>

/// Whether a character is one that nobody sees: NUL, a tab, a line break and their like.
bool isControl(QChar ch);

/// A name without control characters and without blanks at its ends: what somebody means who has
/// typed one of them by accident.
QString plainName(const QString& name);
