#include "cli/JsonArray.h"

#include "cli/Console.h"

#include <QJsonDocument>

void JsonArray::add(const QJsonObject& element)
{
    console::print(m_last.isEmpty() ? QStringLiteral("[") : m_last + QLatin1Char(','));
    QByteArray text = QJsonDocument(element).toJson();
    text.chop(1);  // the end of the last line
    m_last = QStringLiteral("    ") + QString::fromUtf8(text.replace("\n", "\n    "));
}

void JsonArray::end()
{
    console::print(m_last.isEmpty() ? QStringLiteral("[") : m_last);
    console::print(QStringLiteral("]"));
}
