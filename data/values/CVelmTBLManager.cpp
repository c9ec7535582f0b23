#include "CVelmTBLManager.h"

#include "common/files/DatabasePath.h"
#include "common/files/SearchPaths.h"
#include "CVelmDatabase.h"
#include "data/access/ConfigDatabase.h"
#include "data/access/ConfigSources.h"
#include "data/access/TableReader.h"
#include "data/sql/Connection.h"
#include "data/values/DictionaryName.h"

#include <QSqlDatabase>

using namespace velm::detail;

namespace {

using Dictionary = QVector<QPair<QString, QString>>;

/// Registers the connection under which hosts may look for the database of the dictionaries. It
/// stays closed.
void registerConnection()
{
    const QString name = QStringLiteral("TBL_SQLITE");
    if (QSqlDatabase::contains(name))
        QSqlDatabase::removeDatabase(name);
    addConnection(QStringLiteral("QSQLITE"), name)
        .setDatabaseName(databaseName(SearchPaths::instance().systemDatabase()));
}

/// The rows of a dictionary table. False if they cannot be read.
bool readDictionary(const CVelmDatabase& database, const ConfigTable& table, Dictionary& dictionary)
{
    TableReader rows(database, table);
    const int code = rows.column(QStringLiteral("CODE"));
    const int value = rows.column(QStringLiteral("VALUE"));
    if (code < 0 || value < 0)
        return false;
    while (rows.next())
        dictionary.append({rows.text(code), rows.text(value)});
    return !rows.brokeOff();
}

}  // namespace

CVelmTBLManager::CVelmTBLManager()
{
    loadAlone(
        QStringLiteral("dictionaries"), [this](ConfigSources& sources) { load(sources); },
        [this] { m_dictionaries.clear(); });
}

CVelmTBLManager::CVelmTBLManager(std::nullptr_t) {}

CVelmTBLManager::CVelmTBLManager(const CVelmTBLManager& other) = default;

CVelmTBLManager& CVelmTBLManager::operator=(const CVelmTBLManager& other) = default;

CVelmTBLManager::~CVelmTBLManager() = default;

void CVelmTBLManager::load(ConfigSources& sources)
{
    registerConnection();
    if (!sources.hasSystem())
        return;
    loadTables(sources.system());
    loadPipeDictionaries(sources.pipe());
}

void CVelmTBLManager::loadTables(const CVelmDatabase& database)
{
    QVector<ConfigTable> tables;
    const ReadOutcome outcome = findConfigTables(database.getQSqlDatabase(), tables);
    if (!outcome.isComplete())
        addReadProblem(database, QStringLiteral("sqlite_master"), describe(outcome.error));
    for (const ConfigTable& table : qAsConst(tables)) {
        Dictionary dictionary;
        if (namesDictionary(table.name) && isIdentifier(table.name)
            && readDictionary(database, table, dictionary))
            m_dictionaries.insert(table.name, dictionary);
    }
}

void CVelmTBLManager::loadPipeDictionaries(const CVelmDatabase& pipe)
{
    TableReader rows(pipe, QStringLiteral("SYS_DICTIONARY"));
    const int name = rows.column(QStringLiteral("NAME"));
    const int list = rows.column(QStringLiteral("LISTVALUE"));
    QVector<QPair<QString, Dictionary>> dictionaries;
    while (rows.next()) {
        if (rows.text(name).isEmpty())
            continue;
        const QStringList values = rows.text(list).split(QLatin1Char(';'));
        Dictionary dictionary;
        for (int i = 0; i < values.size(); ++i)
            dictionary.append({QString::number(i), values.at(i)});
        dictionaries.append({rows.text(name), dictionary});
    }
    if (rows.brokeOff())
        return;
    for (const auto& [key, dictionary] : qAsConst(dictionaries))
        m_dictionaries.insert(key, dictionary);
}

bool CVelmTBLManager::GetDictByTable(const QString& name, QMap<QString, QString>& dict) const
{
    const auto found = m_dictionaries.constFind(name);
    if (found == m_dictionaries.constEnd())
        return false;
    dict.clear();
    for (const auto& entry : *found)
        dict.insert(entry.first, entry.second);
    return true;
}

bool CVelmTBLManager::GetDictByTable(const QString& name, Dictionary& dict) const
{
    const auto found = m_dictionaries.constFind(name);
    if (found == m_dictionaries.constEnd())
        return false;
    dict = *found;
    return true;
}

QStringList CVelmTBLManager::getCodeValue(const QString& name, const QString& separator) const
{
    QStringList texts;
    const Dictionary dictionary = m_dictionaries.value(name);
    for (const auto& entry : dictionary)
        texts.append(entry.first + separator + entry.second);
    return texts;
}
