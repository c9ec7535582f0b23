#pragma once

#include "check/CheckedTable.h"
#include "check/GisTables.h"
#include "check/StandIn.h"

#include <QSet>
#include <QStringList>
#include <QVector>

#include <initializer_list>

class Snapshot;

/// The tables of a configuration set, as far as they are there. Each database is read in one state.
class CheckedSet
{
public:
    /// Reads the databases that the library has for the root in use.
    CheckedSet();

    /// Why a database cannot be read to its end; empty if they all can.
    const QString& problem() const { return m_problem; }

    const QVector<CheckedTable>& tables() const { return m_tables; }
    /// A table that the library reads, by its name; that of the system configuration if both
    /// databases have one.
    const CheckedTable& table(const char* name) const;
    /// Whether all of these tables are there, with the columns by which rows are found. What
    /// follows from a missing one need not be told.
    bool has(std::initializer_list<const char*> names) const;

    /// Whether there is a PipeConfig.db.
    bool hasPipe() const { return m_hasPipe; }
    /// All GIS tables. Of no worth unless knowsGisTables().
    const GisTables& gisTables() const { return m_gisTables; }
    bool knowsGisTables() const
    {
        return has({"Attributetable", "Attributefield", "SYS_GISTABLE", "SYS_ATTRIBUTEDEF"});
    }
    /// Names of everything in the system configuration that stores rows or shows them.
    const QStringList& systemTables() const { return m_systemTables; }
    /// Names of all dictionaries that the library loads, or would if nothing were amiss with them.
    const QSet<QString>& dictionaries() const { return m_dictionaries; }

    /// The text files that stand in for tables.
    const QVector<StandIn>& standIns() const { return m_standIns; }

    /// Key columns without an index.
    const QVector<Place>& withoutIndex() const { return m_withoutIndex; }
    /// Each with its database and its table.
    const QVector<Place>& triggers() const { return m_triggers; }

private:
    void readSystem();
    void readPipe();
    void read(Snapshot& snapshot, const QString& fileName);
    void findDictionaries();
    void readStandIns();

    QVector<CheckedTable> m_tables;
    GisTables m_gisTables;
    QVector<StandIn> m_standIns;
    QStringList m_systemTables;
    QSet<QString> m_dictionaries;
    QVector<Place> m_withoutIndex;
    QVector<Place> m_triggers;
    QString m_problem;
    bool m_hasPipe = false;
    qint64 m_budget = 512 * 1024 * 1024;  // bytes of all tables together
};
