#include "cli/JsonStream.h"

#include "cli/Console.h"

#include <QJsonDocument>

JsonStream::JsonStream(const QString& before, const QString& after) : m_after(after)
{
    console::write(before + QLatin1Char('['));
}

JsonStream::~JsonStream()
{
    console::write((m_empty ? QStringLiteral("]") : QStringLiteral("\n]")) + m_after
                   + QLatin1Char('\n'));
}

void JsonStream::add(const QJsonObject& element)
{
    console::write((m_empty ? QStringLiteral("\n") : QStringLiteral(",\n"))
                   + QString::fromUtf8(QJsonDocument(element).toJson()).trimmed());
    m_empty = false;
}
