#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

namespace json {

/// An object as indented text, without a line end behind it.
QByteArray textOf(const QJsonObject& object);
QByteArray textOf(const QString& string);

/// @p text with its lines four columns further in, but for the first.
QByteArray indented(const QByteArray& text);

}  // namespace json

/// Prints a JSON array as a result, one element after the other, so that a long one takes no
/// memory. One that breaks off has no closing bracket: nobody takes it for the whole answer.
class JsonArray
{
public:
    void add(const QJsonObject& element);
    /// The same of an element's indented text.
    void add(const QByteArray& element);
    /// Prints what is missing of the array.
    void end();

private:
    QString m_last;  // not printed yet; empty before the first
};
