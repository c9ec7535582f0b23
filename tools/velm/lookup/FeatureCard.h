#pragma once

#include "lookup/CardGroup.h"

class Configuration;

/// Everything that the configuration says about one feature code.
class FeatureCard
{
public:
    /// Looks @p code up.
    FeatureCard(const QString& code, const Configuration& configuration);

    /// The card of a code that nothing defines.
    static FeatureCard unknown(const QString& code) { return FeatureCard(code); }

    /// Whether the index or the work definitions hold the code.
    bool isFound() const { return m_found; }

    /// Prints the card to standard output.
    void print() const;
    /// Stable keys: code, found, and one for each group: index, work, area, annotation, table,
    /// record; null where the configuration tells nothing.
    QJsonObject toJson() const;

private:
    explicit FeatureCard(const QString& code) : m_code(code) {}

    QString m_code;
    QString m_name;
    bool m_found = false;
    QVector<CardGroup> m_groups;
};
