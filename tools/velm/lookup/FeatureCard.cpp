#include "lookup/FeatureCard.h"

#include "cli/Colours.h"
#include "cli/Console.h"
#include "cli/JsonArray.h"
#include "cli/TerminalText.h"

#include <QMap>

#include <array>

namespace {

constexpr std::array<const char*, 6> kGroups{"index",      "work",  "area",
                                             "annotation", "table", "record"};

}  // namespace

void FeatureCard::print() const
{
    const QString title = m_name.isEmpty() ? m_code : m_code + QLatin1Char(' ') + m_name;
    console::print(console::heading(console::plain(title)));
    for (const CardGroup& group : m_groups)
        group.print();
}

QByteArray FeatureCard::jsonText() const
{
    QMap<QString, QByteArray> members = {{QStringLiteral("code"), json::textOf(m_code)},
                                         {QStringLiteral("found"), m_found ? "true" : "false"}};
    for (const char* key : kGroups)
        members.insert(QLatin1String(key), "null");
    for (const CardGroup& group : m_groups)
        members.insert(group.key(), json::indented(group.jsonText()));
    QByteArray text = "{";
    for (auto it = members.cbegin(); it != members.cend(); ++it)
        text +=
            (it == members.cbegin() ? "\n    \"" : ",\n    \"") + it.key().toUtf8() + "\": " + *it;
    return text + "\n}";
}

QJsonObject FeatureCard::unknown(const QString& code)
{
    QJsonObject card{{QStringLiteral("code"), code}, {QStringLiteral("found"), false}};
    for (const char* key : kGroups)
        card.insert(QLatin1String(key), QJsonValue());
    return card;
}
