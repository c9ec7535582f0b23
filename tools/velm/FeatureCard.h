#pragma once

#include "CVelmIndex.h"
#include "CVelmWork.h"

#include <QJsonObject>

#include <optional>

/// The name of an entity type: "general", "text", "special line", or the number.
QString entityTypeName(int type);

/// Everything that the configuration says about one feature code.
class FeatureCard
{
public:
    /// Looks @p code up.
    FeatureCard(const QString& code, const CVelmIndex& index, const CVelmWork& work);

    /// Whether the index or the work definitions hold the code.
    bool isFound() const { return m_index || m_work; }

    /// Prints the card to standard output.
    void print() const;
    /// Stable keys: code, found, index and work (null where there is none).
    QJsonObject toJson() const;

private:
    QString m_code;
    Velm::EntityType m_entityType = Velm::EntityUnset;
    std::optional<VelmIndexItem> m_index;
    std::optional<VelmWorkItem> m_work;
};
