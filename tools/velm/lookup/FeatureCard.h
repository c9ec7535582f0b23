#pragma once

#include "lookup/CardGroup.h"

/// Everything that the configuration says about one feature code.
class FeatureCard
{
public:
    /// Stable keys: code, found, and one for each group: index, work, area, annotation, table,
    /// record; null where the configuration tells nothing.
    QByteArray jsonText() const;
    /// Prints the card to standard output.
    void print() const;

    /// The card, in JSON, of a code that nothing defines.
    static QJsonObject unknown(const QString& code);

private:
    friend class FeatureCards;

    QString m_code;
    QString m_name;
    bool m_found = false;
    QVector<CardGroup> m_groups;
};
