#include "lookup/CardGroup.h"

#include "cli/Colours.h"
#include "cli/Console.h"
#include "cli/JsonArray.h"
#include "cli/TerminalText.h"
#include "cli/TextTable.h"

#include "CVelmString.h"

#include <QJsonArray>

namespace {

constexpr int kLabelWidth = 18;
constexpr int kIndent = 4;

}  // namespace

void CardGroup::add(const char* key, const char* label, const QString& text)
{
    addValue(key, label, text, text);
}

void CardGroup::add(const char* key, const char* label, double number)
{
    addValue(key, label, number, CVelmString::Double2QString(number));
}

void CardGroup::add(const char* key, const char* label, int number, const QString& meaning)
{
    addValue(key, label, number, meaning.isEmpty() ? QString::number(number) : meaning);
}

void CardGroup::add(const char* key, const char* label, const QStringList& texts)
{
    addValue(key, label, QJsonArray::fromStringList(texts), texts.join(QStringLiteral(", ")));
}

void CardGroup::addColour(const char* key, const char* label, int index)
{
    m_json.insert(QLatin1String(key), index);
    m_lines.append({QLatin1String(label), QString::number(index), console::swatch(index)});
}

void CardGroup::addValue(const char* key, const char* label, const QJsonValue& value,
                         const QString& shown)
{
    m_json.insert(QLatin1String(key), value);
    m_lines.append({QLatin1String(label), shown.isEmpty() ? QStringLiteral("-") : shown});
}

void CardGroup::addRows(const char* key, const QStringList& columns,
                        const QVector<QStringList>& rows)
{
    QJsonArray objects;
    for (const QStringList& row : rows) {
        QJsonObject object;
        for (int i = 0; i < columns.size(); ++i)
            object.insert(columns.at(i), row.at(i));
        objects.append(object);
    }
    m_json.insert(QLatin1String(key), objects);
    m_columns = columns;
    m_rows = rows;
}

void CardGroup::keepText()
{
    m_text = json::textOf(m_json);
}

QByteArray CardGroup::jsonText() const
{
    return m_text.isEmpty() ? json::textOf(m_json) : m_text;
}

void CardGroup::print() const
{
    console::print(QStringLiteral("  ") + console::plain(m_title));
    const QString indent(kIndent, QLatin1Char(' '));
    for (const QStringList& line : m_lines)
        console::print(indent + console::padded(line.at(0), kLabelWidth)
                       + console::clipped(console::plain(line.at(1))) + line.value(2));
    if (m_rows.isEmpty())
        return;
    QStringList header;
    for (const QString& column : m_columns)
        header.append(column.toUpper());
    TextTable table(header);
    for (const QStringList& row : m_rows)
        table.addRow(row);
    table.print(kIndent);
}
