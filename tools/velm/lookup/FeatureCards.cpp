#include "lookup/FeatureCards.h"

#include "lookup/CardGroups.h"

#include "CVelmConfigManager.h"
#include "CVelmIndex.h"
#include "CVelmWork.h"

FeatureCard FeatureCards::card(const QString& code, const AnnotationAnswer& annotation)
{
    FeatureCard card;
    card.m_code = code;
    const CVelmIndex& index = *m_manager.GetVelmIndex();
    const CVelmWork& work = *m_manager.GetVelmWork();
    for (const auto& group : {groups::indexGroup(code, index), groups::workGroup(code, work),
                              groups::areaGroup(code, *m_manager.GetVelmAreaLine()),
                              groups::annotationGroup(annotation), tableGroupOf(code),
                              groups::recordGroup(code, *m_manager.GetVelmRecordManager())}) {
        if (group)
            card.m_groups.append(*group);
    }
    card.m_found = index.getName(code, card.m_name) == Velm::VelmOk || work.isValidCode(code);
    return card;
}

const std::optional<CardGroup>& FeatureCards::tableGroupOf(const QString& code)
{
    static const std::optional<CardGroup> none;
    QString table;
    if (m_manager.GetVelmIndex()->getGisTableName(code, table) != Velm::VelmOk)
        return none;
    if (m_table.isNull() || table != m_table) {
        m_tableGroup = groups::tableGroup(table, m_manager);
        if (m_tableGroup)
            m_tableGroup->keepText();
    }
    m_table = table.isNull() ? QStringLiteral("") : table;
    return m_tableGroup;
}
