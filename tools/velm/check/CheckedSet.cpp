#include "check/CheckedSet.h"

#include "check/PlainName.h"
#include "check/Snapshot.h"

#include "CVelmSystemGlobal.h"
#include "data/values/DictionaryName.h"

#include <algorithm>

CheckedSet::CheckedSet()
{
    for (const TableSchema& table : schema::tables())
        m_tables.append(CheckedTable(table));
    readSystem();
    readPipe();
    findDictionaries();
    readStandIns();
    m_gisTables = GisTables(*this);
}

const CheckedTable& CheckedSet::table(const char* name) const
{
    return *std::find_if(m_tables.begin(), m_tables.end(), [name](const CheckedTable& table) {
        return table.name() == QLatin1String(name);
    });
}

bool CheckedSet::has(std::initializer_list<const char*> names) const
{
    return std::all_of(names.begin(), names.end(),
                       [this](const char* name) { return table(name).hasKey(); });
}

void CheckedSet::read(Snapshot& snapshot, const QString& fileName)
{
    for (CheckedTable& table : m_tables) {
        if (table.schema().database != fileName)
            continue;
        snapshot.read(table, m_budget);
        snapshot.readIndexes(table);
    }
    for (const Snapshot::Trigger& trigger : snapshot.triggers()) {
        Place place;
        place.database = fileName;
        place.table = trigger.table;
        place.value = trigger.name;
        m_triggers.append(place);
    }
    if (m_problem.isEmpty())
        m_problem = snapshot.problem();
}

void CheckedSet::readSystem()
{
    Snapshot snapshot(schema::kSystemFile, CVelmSystemGlobal::Instance()->getSystemConfigDb());
    m_systemTables = snapshot.tableNames();
    for (const QString& name : qAsConst(m_systemTables)) {
        if (schema::isDictionary(name))
            m_tables.append(CheckedTable(schema::dictionary(name)));
    }
    read(snapshot, schema::kSystemFile);
    for (const CheckedTable& table : qAsConst(m_tables)) {
        const QString& key = table.schema().key.first();
        if (table.schema().queried && table.has(key) && !snapshot.isSearched(table.name(), key))
            m_withoutIndex.append(table.place(key));
    }
}

void CheckedSet::readPipe()
{
    Snapshot snapshot(schema::kPipeFile, CVelmSystemGlobal::Instance()->getPipeConfigDb());
    m_hasPipe = snapshot.exists();
    read(snapshot, schema::kPipeFile);
}

void CheckedSet::readStandIns()
{
    for (const auto& [name, tableName] : StandIn::files()) {
        const QString& wanted = tableName;
        const auto table =
            std::find_if(m_tables.begin(), m_tables.end(),
                         [&wanted](const CheckedTable& table) { return table.name() == wanted; });
        if (table->size() > 0)
            continue;
        const StandIn file(name);
        if (m_problem.isEmpty())
            m_problem = file.problem();
        if (file.isThere())
            m_standIns.append(file);
        if (file.isTaken() && file.takesOneLine())
            table->setStoodInFor();
    }
}

void CheckedSet::findDictionaries()
{
    for (const CheckedTable& table : qAsConst(m_tables)) {
        // One that lacks a column, or is none, is told as that.
        if (schema::isDictionary(table.name()) && velm::detail::isIdentifier(table.name()))
            m_dictionaries.insert(table.name());
        else if (schema::isDictionary(table.name())
                 && velm::detail::isIdentifier(plainName(table.name())))
            m_dictionaries.insert(plainName(table.name()));
    }
    const CheckedTable& pipe = table("SYS_DICTIONARY");
    for (int row = 0; row < pipe.size(); ++row) {
        m_dictionaries.insert(pipe.text(row, QStringLiteral("NAME")));
        m_dictionaries.insert(pipe.plain(row, QStringLiteral("NAME")));
    }
    m_dictionaries.remove(QString());
}
