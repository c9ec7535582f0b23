#include "lookup/FeatureCard.h"

#include "cli/Colours.h"
#include "cli/Console.h"
#include "cli/TerminalText.h"

FeatureCard FeatureCard::unknown(const QString& code)
{
    FeatureCard card;
    card.m_code = code;
    return card;
}

void FeatureCard::print() const
{
    const QString title = m_name.isEmpty() ? m_code : m_code + QLatin1Char(' ') + m_name;
    console::print(console::heading(console::plain(title)));
    for (const CardGroup& group : m_groups)
        group.print();
}

QJsonObject FeatureCard::toJson() const
{
    QJsonObject card{{QStringLiteral("code"), m_code}, {QStringLiteral("found"), m_found}};
    for (const char* key : {"index", "work", "area", "annotation", "table", "record"})
        card.insert(QLatin1String(key), QJsonValue());
    for (const CardGroup& group : m_groups)
        card.insert(group.key(), group.toJson());
    return card;
}
