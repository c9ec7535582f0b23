#include "CVelmTBLManager.h"

#include "config/SystemConfig.h"
#include "CVelmDatabase.h"
#include "CVelmSystemGlobal.h"
#include "data/ConfigDatabase.h"

#include <QSqlDatabase>
#include <QSqlQuery>

#include <algorithm>

namespace {

using Dictionary = QVector<QPair<QString, QString>>;

/// Whether @p table is named as a dictionary and is an identifier of SQLite, to which every
/// character beyond ASCII is a letter: only such a name may stand in a statement as it is.
bool isDictionary(const QString& table)
{
    const bool named = table.startsWith(QLatin1String("TBL_"), Qt::CaseInsensitive)
                       || table.startsWith(QLatin1String("TB_"), Qt::CaseInsensitive);
    return named && std::all_of(table.begin(), table.end(), [](QChar ch) {
               return ch.unicode() >= 0x80 || ch.isLetterOrNumber() || ch == QLatin1Char('_')
                      || ch == QLatin1Char('$');
           });
}

/// The rows of a dictionary table. False if it cannot be read.
bool readDictionary(const QSqlDatabase& database, const QString& table, Dictionary& dictionary)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.exec(QStringLiteral("select code, value from ") + table))
        return false;
    while (query.next())
        dictionary.append({query.value(0).toString(), query.value(1).toString()});
    return true;
}

/// A connection under the given name, closed (but still registered) at the end of its scope.
class NamedConnection
{
public:
    explicit NamedConnection(const QString& name)
    {
        if (QSqlDatabase::contains(name))
            QSqlDatabase::removeDatabase(name);
        m_database = QSqlDatabase::addDatabase(QString::fromLatin1("QSQLITE"), name);
    }
    ~NamedConnection() { m_database.close(); }
    Q_DISABLE_COPY(NamedConnection)

    QSqlDatabase& database() { return m_database; }

private:
    QSqlDatabase m_database;
};

}  // namespace

CVelmTBLManager::CVelmTBLManager()
{
    if (loadTables())
        loadPipeDictionaries();
}

CVelmTBLManager::CVelmTBLManager(const CVelmTBLManager& other) = default;

CVelmTBLManager& CVelmTBLManager::operator=(const CVelmTBLManager& other) = default;

CVelmTBLManager::~CVelmTBLManager() = default;

/// False if the database cannot be read.
bool CVelmTBLManager::loadTables()
{
    // A copy of the name: Qt keeps it longer than the library may be loaded.
    NamedConnection connection(QString::fromLatin1("TBL_SQLITE"));
    QSqlDatabase& database = connection.database();
    database.setDatabaseName(CVelmSystemGlobal::Instance()->getSystemConfigDb());
    if (!velm::detail::openConfigConnection(database))
        return false;
    QSqlQuery tables(database);
    if (!tables.exec(
            QStringLiteral("select name from sqlite_master where type='table' order by name")))
        return false;
    while (tables.next()) {
        const QString table = tables.value(0).toString();
        Dictionary dictionary;
        if (isDictionary(table) && readDictionary(database, table, dictionary))
            m_dictionaries.insert(table, dictionary);
    }
    return true;
}

void CVelmTBLManager::loadPipeDictionaries()
{
    CVelmDatabase database;
    if (velm::detail::openPipeConfig(database) != Velm::VelmOk)
        return;
    const auto rows = database.readTable(QStringLiteral("SYS_DICTIONARY"));
    for (const QMap<QString, QVariant>& row : rows) {
        const QString name = row.value(QStringLiteral("NAME")).toString();
        if (name.isEmpty())
            continue;
        const QStringList values =
            row.value(QStringLiteral("LISTVALUE")).toString().split(QLatin1Char(';'));
        Dictionary dictionary;
        for (int i = 0; i < values.size(); ++i)
            dictionary.append({QString::number(i), values.at(i)});
        m_dictionaries.insert(name, dictionary);
    }
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

QStringList CVelmTBLManager::getCodeValue(const QString& name, const QString& separator)
{
    QStringList texts;
    const Dictionary dictionary = m_dictionaries.value(name);
    for (const auto& entry : dictionary)
        texts.append(entry.first + separator + entry.second);
    return texts;
}
