#pragma once

#include "lookup/FeatureCard.h"

#include "CVelmAnnotate.h"

#include <optional>

class CVelmConfigManager;

/// Makes the cards of many codes.
class FeatureCards
{
public:
    explicit FeatureCards(const CVelmConfigManager& manager) : m_manager(manager) {}

    /// The card of @p code, about whose annotation the library has answered @p status and @p item.
    FeatureCard card(const QString& code, Velm::ErrorStatus status, const VelmAnnItem& item);

private:
    const std::optional<CardGroup>& tableGroupOf(const QString& code);

    const CVelmConfigManager& m_manager;
    QString m_table;                        // null before the first
    std::optional<CardGroup> m_tableGroup;  // of m_table: codes often come by table
};
