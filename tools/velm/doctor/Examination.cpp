#include "doctor/Examination.h"

#include "doctor/Companions.h"
#include "set/Readable.h"
#include "set/Schema.h"

#include "CVelmConfigManager.h"
#include "CVelmIndex.h"
#include "CVelmSaveUserData.h"
#include "CVelmSystemGlobal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <QResource>
#include <QSqlDatabase>
#include <QSysInfo>
#include <QTemporaryFile>
#include <QTextCodec>

#include <algorithm>

namespace {

CVelmSystemGlobal& system()
{
    return *CVelmSystemGlobal::Instance();
}

/// Findings of one group.
class Group
{
public:
    Group(QVector<Finding>& findings, const char* id, const char* title)
        : m_findings(findings), m_id(QLatin1String(id)), m_title(QString::fromUtf8(title))
    {}

    void fine(const char* id, const char* label, const QString& value)
    {
        add(id, label, value, Finding::Fine, QString());
    }

    void add(const char* id, const char* label, const QString& value, Finding::State state,
             const QString& advice)
    {
        m_findings.append({m_title, m_id + QLatin1Char('.') + QLatin1String(id),
                           QString::fromUtf8(label), value, state,
                           state == Finding::Fine ? QString() : advice});
    }

private:
    QVector<Finding>& m_findings;
    QString m_id;
    QString m_title;
};

bool isChinese(const QString& text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar ch) { return ch.script() == QChar::Script_Han; });
}

bool configurationHoldsChinese()
{
    const auto items = CVelmConfigManager::Instance()->GetVelmIndex()->getIndexMap();
    return std::any_of(items.begin(), items.end(),
                       [](const VelmIndexItem& item) { return isChinese(item.name); });
}

/// Why a database, or a table that it needs, cannot be read; empty if all can. The reading is the
/// library's, within its bounds.
QString whyNotLoaded(const QString& path)
{
    const QString file = QFileInfo(path).fileName();
    QStringList tables;
    for (const TableSchema& table : schema::tables()) {
        if (!table.optional && table.database == file)
            tables.append(table.name);
    }
    QString problem = whyUnreadable(path, tables);
    if (!problem.isEmpty())
        return problem;
    const QStringList problems = CVelmConfigManager::Instance()->loadProblems();
    const auto told = std::find_if(problems.begin(), problems.end(),
                                   [&file](const QString& line) { return line.startsWith(file); });
    return told == problems.end() ? QString() : *told;
}

/// On Windows Qt calls the codec "System" whatever the code page is, so it is known by what it
/// does.
bool localCodePageIsGbk()
{
    return QTextCodec::codecForLocale()->fromUnicode(QStringLiteral("测")) == "\xB2\xE2";
}

void examineLibrary(QVector<Finding>& findings)
{
    Group group(findings, "library", "Library");
    group.fine("version", "VelmCommon", CVelmSystemGlobal::libraryVersion());
    group.fine("qt", "Qt",
               QStringLiteral("%1, built with %2")
                   .arg(QLatin1String(qVersion()), QLatin1String(QT_VERSION_STR)));
    group.fine("system", "system", QSysInfo::prettyProductName());
    group.fine("bits", "bits", QString::number(sizeof(void*) * 8));
    group.fine("long", "long", QStringLiteral("%1 bytes").arg(sizeof(long)));
    const bool gbk = localCodePageIsGbk();
    const bool matters =
        !gbk && whyNotLoaded(system().getSystemConfigDb()).isEmpty() && configurationHoldsChinese();
    group.add("codepage", "local code page",
              gbk ? QStringLiteral("GBK (936)")
                  : QString::fromLatin1(QTextCodec::codecForLocale()->name()),
              matters ? Finding::Warning : Finding::Fine,
              QStringLiteral("the configuration holds Chinese: text files of the older set and "
                             "reports in GBK are read and written wrongly here"));
}

void examineDatabases(QVector<Finding>& findings)
{
    Group group(findings, "database", "Databases");
    const QStringList drivers = QSqlDatabase::drivers();
    const bool sqlite = drivers.contains(QStringLiteral("QSQLITE"));
    group.add("sqlite", "SQLite", sqlite ? QStringLiteral("QSQLITE") : QStringLiteral("not found"),
              sqlite ? Finding::Fine : Finding::Error,
              QStringLiteral("install Qt's SQLite plug-in (Debian: libqt5sql5-sqlite); on Windows "
                             "the folder \"sqldrivers\" belongs beside the program"));
    const bool odbc = drivers.contains(QStringLiteral("QODBC"));
    group.add("odbc", "ODBC", odbc ? QStringLiteral("QODBC") : QStringLiteral("not found"),
              odbc ? Finding::Fine : Finding::Note,
              QStringLiteral("needed for Access files only (Debian: libqt5sql5-odbc)"));
    const QString access = companions::accessDriver();
    group.add("access", "Access driver", access.isEmpty() ? QStringLiteral("not found") : access,
              access.isEmpty() ? Finding::Note : Finding::Fine,
              QStringLiteral("needed for Access files (*.mdb) only"));
    group.fine("drivers", "all of Qt's", drivers.join(QStringLiteral(", ")));
}

/// Whether a file can be changed, or files be made in a folder: tried, since what its permissions
/// promise another layer of the system may refuse.
bool canBeWritten(const QString& path)
{
    if (QFileInfo(path).isDir())
        return QTemporaryFile(path + QStringLiteral("/.velm-doctor-XXXXXX")).open();
    return QFile(path).open(QIODevice::ReadWrite | QIODevice::ExistingOnly);
}

QString withAccess(const QString& path)
{
    const QString shown = QDir::toNativeSeparators(path);
    if (!QFileInfo::exists(path))
        return shown + QStringLiteral(" (missing)");
    return shown
           + (canBeWritten(path) ? QStringLiteral(" (writable)") : QStringLiteral(" (read-only)"));
}

void examineConfiguration(QVector<Finding>& findings, bool rootIsGiven)
{
    Group group(findings, "configuration", "Configuration");
    const QString named = rootIsGiven ? QString() : qEnvironmentVariable("VELM_ROOT");
    const bool ignored = !named.isEmpty() && !QFileInfo(named).isDir();
    group.add("root", "root", withAccess(system().getSystemRootRoute()),
              ignored ? Finding::Warning : Finding::Fine,
              QStringLiteral("VELM_ROOT names no folder: \"%1\"").arg(named));
    const QString systemDb = system().getSystemConfigDb();
    const QString problem = whyNotLoaded(systemDb);
    group.add(
        "system", "system database", withAccess(systemDb),
        problem.isEmpty() ? Finding::Fine : Finding::Error,
        problem
            + QStringLiteral("; --root DIR or VELM_ROOT names the folder that holds \"config\""));
    const QString pipeDb = system().getPipeConfigDb();
    const QString pipeProblem = whyNotLoaded(pipeDb);
    group.add("pipe", "pipe database", withAccess(pipeDb),
              pipeProblem.isEmpty() ? Finding::Fine : Finding::Warning,
              pipeProblem
                  + QStringLiteral("; pipe tables and dictionaries are unknown without it"));
    const QStringList paths = system().getSearchPaths();
    for (int i = 0; i < paths.size(); ++i)
        group.add("searchpath", i == 0 ? "search paths" : "", withAccess(paths.at(i)),
                  QFileInfo(paths.at(i)).isDir() ? Finding::Fine : Finding::Note, QString());
}

bool isBundle(const QString& path)
{
    // Under a root of its own, so that the bundle in use is left alone.
    const QString place = QStringLiteral("/velm-doctor");
    return QResource::registerResource(path, place) && QResource::unregisterResource(path, place);
}

void examineStart(QVector<Finding>& findings)
{
    Group group(findings, "start", "Start");
    const auto addFile = [&group](const char* id, const char* label, const char* name,
                                  bool (*works)(const QString& path), const char* loss) {
        const QString path = CVelmSystemGlobal::findModuleFile(QLatin1String(name));
        const bool fine = !path.isEmpty() && works(path);
        const QString what = path.isEmpty()
                                 ? QStringLiteral("it is installed beside the library; without it ")
                                 : QStringLiteral("it is damaged; without a sound one ");
        group.add(id, label,
                  path.isEmpty() ? QLatin1String(name) + QStringLiteral(" (missing)")
                                 : QDir::toNativeSeparators(path),
                  fine ? Finding::Fine : Finding::Error, what + QString::fromUtf8(loss));
    };
    addFile("bundle", "resource bundle", "VelmResource.rcc", isBundle,
            "dialogs are not in Chinese");
    addFile(
        "companion", "companion", "adapter_qtinit.dll",
        [](const QString& path) { return QLibrary(path).load(); },
        "the library does not start as it should");
}

/// SQLite needs the folder too, for its journal.
bool canKeepDatabase(const QFileInfo& file)
{
    return canBeWritten(file.path())
           && (!file.exists() || (file.isFile() && canBeWritten(file.filePath())));
}

void examineUser(QVector<Finding>& findings)
{
    Group group(findings, "user", "User");
    const QFileInfo file(CVelmSaveUserData::fileName());
    group.add("store", "store of this program",
              QDir::toNativeSeparators(file.filePath())
                  + (file.exists() ? QString() : QStringLiteral(" (not made yet)")),
              canKeepDatabase(file) ? Finding::Fine : Finding::Warning,
              QStringLiteral("it cannot be written, so settings of the user are not kept"));
}

void examineOffice(QVector<Finding>& findings)
{
    Group group(findings, "office", "Office");
    const auto add = [&group](const char* id, const char* label, const QString& found,
                              const char* use) {
        group.add(id, label, found.isEmpty() ? QStringLiteral("not found") : found,
                  found.isEmpty() ? Finding::Note : Finding::Fine, QString::fromUtf8(use));
    };
    add("office", "Microsoft Office", companions::microsoftOffice(),
        "needed to fill Word and Excel documents through the programs themselves");
    add("libreoffice", "LibreOffice", companions::libreOffice(),
        "an alternative for looking at documents");
}

}  // namespace

QVector<Finding> examine(bool rootIsGiven)
{
    QVector<Finding> findings;
    examineLibrary(findings);
    examineConfiguration(findings, rootIsGiven);
    examineStart(findings);
    examineDatabases(findings);
    examineUser(findings);
    examineOffice(findings);
    return findings;
}
