#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <ostream>

// How tests write values of Qt, and how GoogleTest prints those of a failed expectation. It finds
// PrintTo() by argument-dependent look-up, so they stand in the namespace of the types, the global
// one.

using Record = QMap<QString, QVariant>;
using Rows = QVector<Record>;

/// u"列"_s is QStringLiteral("列"), for tests whose lines are mostly texts.
inline QString operator""_s(const char16_t* text, size_t length)
{
    return QString::fromUtf16(text, static_cast<int>(length));
}

/// The parts of a text such as u"a|b"_s.
inline QStringList listOf(const QString& parts)
{
    return parts.split(u'|');
}

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
