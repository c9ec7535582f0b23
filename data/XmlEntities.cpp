#include "data/XmlEntities.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace velm::detail {

namespace {

constexpr qint64 kMostExpanded = 8 * 1000 * 1000;  // characters
constexpr qint64 kMostNested = 4096;  // characters that Qt lets an entity of entities grow to
constexpr int kMostOpened = 256;      // elements and groups that an entity may begin

/// An upper bound of what each reference adds to the text.
class EntityCosts
{
public:
    explicit EntityCosts(const QString& xml)
    {
        static const QRegularExpression declaration(
            QStringLiteral(R"x(<!ENTITY\s+(?:%\s+)?([^\s"'%]+)\s*(?:"([^"]*)"|'([^']*)'))x"));
        auto found = declaration.globalMatch(xml);
        while (found.hasNext())
            add(found.next());
    }

    qint64 of(const QString& name) const { return m_costs.value(name, m_greatest); }

private:
    void add(const QRegularExpressionMatch& match)
    {
        const QString value = match.captured(2) + match.captured(3);
        const bool nested = value.contains(QLatin1Char('&')) || value.contains(QLatin1Char('%'));
        const int opened = value.count(QLatin1Char('<')) + value.count(QLatin1Char('('));
        // Within an entity the parser's depth is not watched.
        const qint64 cost = opened > kMostOpened
                                ? kMostExpanded + 1
                                : std::max<qint64>(value.size(), nested ? kMostNested : 0);
        m_costs[match.captured(1)] = std::max(cost, m_costs.value(match.captured(1)));
        m_greatest = std::max(cost, m_greatest);
    }

    QHash<QString, qint64> m_costs;
    qint64 m_greatest = kMostNested;  // of an entity that was not recognised
};

bool isPredefined(const QString& name)
{
    return name == QLatin1String("amp") || name == QLatin1String("lt")
           || name == QLatin1String("gt") || name == QLatin1String("quot")
           || name == QLatin1String("apos");
}

}  // namespace

QString withoutEntityBomb(const QString& xml)
{
    const int firstEntity = xml.indexOf(QLatin1String("<!ENTITY"));
    if (firstEntity < 0)
        return xml;
    const EntityCosts costs(xml);
    static const QRegularExpression reference(QStringLiteral("[&%]([^\\s#&%;<>\"']+);"));
    qint64 expanded = 0;
    auto found = reference.globalMatch(xml);
    while (found.hasNext() && expanded <= kMostExpanded) {
        const QString name = found.next().captured(1);
        if (!isPredefined(name))
            expanded += costs.of(name);
    }
    return expanded <= kMostExpanded ? xml : xml.left(firstEntity);
}

}  // namespace velm::detail
