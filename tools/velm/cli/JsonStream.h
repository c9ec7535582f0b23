#pragma once

#include <QJsonObject>
#include <QString>

/// A JSON array on standard output, printed element by element, so that its length takes no memory.
class JsonStream
{
public:
    /// What stands around the array.
    explicit JsonStream(const QString& before = QString(), const QString& after = QString());
    /// Prints the end of the array.
    ~JsonStream();
    JsonStream(const JsonStream&) = delete;
    JsonStream& operator=(const JsonStream&) = delete;

    void add(const QJsonObject& element);

private:
    QString m_after;
    bool m_empty = true;
};
