#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <ostream>

// What GoogleTest prints when an expectation about Qt values fails. Found by argument-dependent
// look-up, so they stand in the namespace of the types, the global one.

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& list, std::ostream* out)
{
    *out << '[' << list.join(QStringLiteral("|")).toStdString() << ']';
}

inline void PrintTo(const QVariant& value, std::ostream* out)
{
    *out << (value.isValid() ? value.typeName() : "invalid") << '('
         << value.toString().toStdString() << ')';
}
