#pragma once

#include <QJsonObject>
#include <QString>

/// Prints a JSON array as a result, one element after the other, so that a long one takes no
/// memory. One that breaks off has no closing bracket: nobody takes it for the whole answer.
class JsonArray
{
public:
    void add(const QJsonObject& element);
    /// Prints what is missing of the array.
    void end();

private:
    QString m_last;  // not printed yet; empty before the first
};
