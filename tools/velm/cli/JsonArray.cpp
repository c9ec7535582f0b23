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

JsonArray::JsonArray(const QByteArray& before, const QByteArray& after)
    : m_separator(before + "[\n"), m_after(after)
{}

void JsonArray::add(const QJsonObject& element)
{
    add(json::textOf(element));
}

void JsonArray::add(const QByteArray& element)
{
    console::write(m_separator + "    " + json::indented(element));
    m_separator = ",\n";
}

void JsonArray::end()
{
    console::write((m_separator == ",\n" ? "\n" : m_separator) + "]" + m_after + '\n');
}
