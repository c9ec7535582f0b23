#pragma once

#include <QHash>
#include <QSet>
#include <QString>

class CheckedSet;
class CheckedTable;
struct ColumnSchema;
struct Place;

/// The names by which rows are found, in both databases, as they will be after the changes that are
/// planned.
class MendedNames
{
public:
    explicit MendedNames(const CheckedSet& set);

    /// Plans a name without blanks at its ends for a row. @return why it cannot have that; empty if
    /// it can
    QString rename(const CheckedTable& table, const ColumnSchema& column, const Place& place,
                   const QString& name);

private:
    QString whyNoCode(const QString& name) const;
    QString renameUserCode(const Place& place, const QString& name);
    QString whyTaken(const CheckedTable& table, const QString& column, const QString& name);
    QSet<QString> namesBeside(const CheckedTable& table, const QString& column) const;

    const CheckedSet& m_set;
    QSet<QString> m_codes;                  // of the index, exact
    QSet<QString> m_meantCodes;             // without blanks
    QHash<QString, QString> m_userCodes;    // lower-case user code to the code that is meant
    QHash<QString, QSet<QString>> m_names;  // by column, in lower case
};

/// Why a row is left that belongs to a feature whose code keeps its blank.
QString featureKeepsCode();
