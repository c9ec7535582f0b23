#include "cli/JsonArray.h"

#include "cli/Console.h"

#include <QJsonArray>
#include <QJsonDocument>

QByteArray json::textOf(const QJsonObject& object)
{
    QByteArray text = QJsonDocument(object).toJson();
    text.chop(1);  // the end of the last line
    return text;
}

QByteArray json::textOf(const QString& string)
{
    const QByteArray array = QJsonDocument(QJsonArray{string}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

QByteArray json::indented(const QByteArray& text)
{
    QByteArray result;
    result.reserve(2 * text.size());
    for (int begin = 0; begin < text.size();) {
        const int end = text.indexOf('\n', begin);
        const int next = end < 0 ? text.size() : end + 1;
        result.append(text.constData() + begin, next - begin);
        if (end >= 0)
            result.append("    ");
        begin = next;
    }
    return result;
}

void JsonArray::add(const QJsonObject& element)
{
    add(json::textOf(element));
}

void JsonArray::add(const QByteArray& element)
{
    console::print(m_last.isEmpty() ? QStringLiteral("[") : m_last + QLatin1Char(','));
    m_last = QStringLiteral("    ") + QString::fromUtf8(json::indented(element));
}

void JsonArray::end()
{
    console::print(m_last.isEmpty() ? QStringLiteral("[") : m_last);
    console::print(QStringLiteral("]"));
}
