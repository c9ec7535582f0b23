#pragma once

#include <QString>

/// Tells where a text stops being JSON, in words that are the same in every language.
QString jsonFailure(const QString& text);
