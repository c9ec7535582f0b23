#include "check/MendedNames.h"

#include "check/CheckedSet.h"

namespace {

const QString kCode = QStringLiteral("CODE");
const QString kUserCode = QStringLiteral("USECODE");

/// Columns of the two databases in which a name counts once.
struct SharedNames
{
    const char* table;
    const char* column;
    const char* otherTable;
    const char* otherColumn;
};

constexpr SharedNames kShared[] = {
    {"Attributetable", "TABLE", "SYS_GISTABLE", "LAYERNAME"},
    {"Attributefield", "TABLE", "SYS_ATTRIBUTEDEF", "TABLENAME"},
    {"Attributefield", "NAME", "SYS_ATTRIBUTEDEF", "FIELDNAME"},
};

const SharedNames* sharedBy(const CheckedTable& table, const QString& column)
{
    for (const SharedNames& names : kShared) {
        if ((table.name() == QLatin1String(names.table) && column == QLatin1String(names.column))
            || (table.name() == QLatin1String(names.otherTable)
                && column == QLatin1String(names.otherColumn)))
            return &names;
    }
    return nullptr;
}

/// What a column holds, in lower case.
QSet<QString> namesIn(const CheckedTable& table, const QString& column)
{
    QSet<QString> names;
    for (int row = 0; row < table.size(); ++row)
        names.insert(table.text(row, column).toLower());
    return names;
}

}  // namespace

MendedNames::MendedNames(const CheckedSet& set) : m_set(set)
{
    const CheckedTable& index = set.table("indexini");
    for (int row = 0; row < index.size(); ++row) {
        const QString code = index.text(row, kCode);
        m_codes.insert(code);
        m_meantCodes.insert(code.trimmed());
        const QString userCode = index.text(row, kUserCode).toLower();
        m_userCodes.insert(userCode, m_userCodes.value(userCode, code.trimmed()));
    }
}

QString MendedNames::rename(const CheckedTable& table, const ColumnSchema& column,
                            const Place& place, const QString& name)
{
    if (column.holds == Holds::CodeReference && m_codes.contains(place.value))
        return featureKeepsCode();
    if (column.holds == Holds::UserCode)
        return renameUserCode(place, name);
    if (column.holds == Holds::FeatureCode) {
        QString problem = whyNoCode(name);
        if (!problem.isEmpty())
            return problem;
    }
    QString taken = whyTaken(table, column.name, name);
    if (taken.isEmpty() && column.holds == Holds::FeatureCode)
        m_codes.remove(place.value);
    return taken;
}

/// Who types the user code of another feature is to find that.
QString MendedNames::whyNoCode(const QString& name) const
{
    const QString owner = m_userCodes.value(name.toLower(), name);
    return owner == name
               ? QString()
               : QStringLiteral("without the blank it would be the user code of \"%1\"").arg(owner);
}

QString MendedNames::renameUserCode(const Place& place, const QString& name)
{
    const QString code = place.key.trimmed();
    const QString owner = m_userCodes.value(name.toLower(), code);
    if (owner != code)
        return QStringLiteral("without the blank it would be the user code of \"%1\" too")
            .arg(owner);
    if (name != code && m_meantCodes.contains(name))
        return QStringLiteral("without the blank it would be the code of another feature");
    m_userCodes.insert(name.toLower(), code);
    return QString();
}

/// What the column holds, and what of the other database counts in its place or beside it.
QSet<QString> MendedNames::namesBeside(const CheckedTable& table, const QString& column) const
{
    QSet<QString> names;
    const SharedNames* shared = sharedBy(table, column);
    if (shared)
        names = namesIn(m_set.table(shared->table), QLatin1String(shared->column))
                + namesIn(m_set.table(shared->otherTable), QLatin1String(shared->otherColumn));
    else
        names = namesIn(table, column);
    for (const QString& name : m_set.systemTables()) {
        if (table.name() == QLatin1String("SYS_DICTIONARY") && schema::isDictionary(name))
            names.insert(name.toLower());
    }
    return names;
}

QString MendedNames::whyTaken(const CheckedTable& table, const QString& column, const QString& name)
{
    const TableSchema& schema = table.schema();
    if (schema.keyRule == KeyRule::Repeated || !schema.key.contains(column))
        return QString();
    const SharedNames* shared = sharedBy(table, column);
    const QString key =
        shared ? QLatin1String(shared->table) + QLatin1Char('/') + QLatin1String(shared->column)
               : schema.database + table.name() + QLatin1Char('/') + column;
    QSet<QString>& names = m_names[key];
    if (names.isEmpty())
        names = namesBeside(table, column);
    const int before = names.size();
    names.insert(name.toLower());
    return names.size() > before
               ? QString()
               : QStringLiteral("without the blank it would be a second \"%1\"").arg(name);
}

QString featureKeepsCode()
{
    return QStringLiteral("it belongs to a feature whose code keeps its blank");
}
