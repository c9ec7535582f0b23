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
    /// With the text that stands before the array and behind it.
    explicit JsonArray(const QByteArray& before = QByteArray(),
                       const QByteArray& after = QByteArray());

    void add(const QJsonObject& element);
    /// The same of an element's indented text.
    void add(const QByteArray& element);
    /// Prints what is missing of the array.
    void end();

private:
    QByteArray m_separator;  // before the next element
    QByteArray m_after;
};
