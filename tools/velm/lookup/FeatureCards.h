#pragma once

#include "lookup/FeatureCard.h"

#include "CVelmAnnotate.h"

#include <optional>

class CVelmConfigManager;

/// What the library answers about the annotation of a code.
struct AnnotationAnswer
{
    Velm::ErrorStatus status;
    const VelmAnnItem& item;
    bool hasBrokenData;  ///< whether EXTDATA is no JSON object, so that the item has none
};

/// Makes the cards of many codes.
class FeatureCards
{
public:
    explicit FeatureCards(const CVelmConfigManager& manager) : m_manager(manager) {}

    FeatureCard card(const QString& code, const AnnotationAnswer& annotation);

private:
    const std::optional<CardGroup>& tableGroupOf(const QString& code);

    const CVelmConfigManager& m_manager;
    QString m_table;                        // null before the first
    std::optional<CardGroup> m_tableGroup;  // of m_table: codes often come by table
};
