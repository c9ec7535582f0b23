#include "lookup/FeatureCard.h"

#include "cli/Colours.h"
#include "cli/Console.h"
#include "cli/TerminalText.h"
#include "lookup/CardGroups.h"
#include "set/Configuration.h"

#include "CVelmConfigManager.h"
#include "CVelmIndex.h"
#include "CVelmWork.h"

FeatureCard::FeatureCard(const QString& code, const Configuration& configuration) : m_code(code)
{
    const CVelmConfigManager& manager = configuration.manager();
    for (const auto& group : {groups::indexGroup(code, *manager.GetVelmIndex()),
                              groups::workGroup(code, *manager.GetVelmWork()),
                              groups::areaGroup(code, *manager.GetVelmAreaLine()),
                              groups::annotationGroup(code), groups::tableGroup(code, manager),
                              groups::recordGroup(code, *manager.GetVelmRecordManager())}) {
        if (group)
            m_groups.append(*group);
    }
    m_found = manager.GetVelmIndex()->getName(code, m_name) == Velm::VelmOk
              || manager.GetVelmWork()->isValidCode(code);
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
