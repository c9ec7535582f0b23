#include "Commands.h"

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "set/FileSet.h"
#include "set/OlderSet.h"
#include "set/SampleSet.h"

#include "common/files/SystemFile.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>

namespace {

int cannotWrite(const QString& problem)
{
    console::tell(problem + QStringLiteral("; nothing was written"));
    return ExitCannotOpen;
}

/// Makes all files of the set in the staging folder. @return what went wrong; empty if nothing did
QString stageSet(const QVector<DatabaseTables>& databases, FileSet& files)
{
    for (const DatabaseTables& database : databases) {
        QString problem = writeDatabase(database, files.stageDatabase(database.fileName));
        if (!problem.isEmpty())
            return database.fileName + QStringLiteral(", ") + problem;
        if (database.fileName != schema::kSystemFile)
            continue;
        const QMap<QString, QByteArray> texts{
            {QStringLiteral("index.ini"), older::indexIni(database)},
            {QStringLiteral("work.def"), older::workDef(database)},
            {QStringLiteral("attribute.def"), older::attributeDef(database)}};
        for (auto it = texts.begin(); it != texts.end(); ++it) {
            velm::detail::SystemFile file(files.stage(it.key()));
            if (!file.open(QIODevice::ReadWrite | QIODevice::NewOnly)
                || file.write(it.value()) != it.value().size())
                return it.key() + QStringLiteral(": ") + file.errorString();
        }
    }
    return QString();
}

void report(const QVector<DatabaseTables>& databases, const QString& folder, bool json)
{
    QJsonArray tables;
    for (const DatabaseTables& database : databases) {
        for (const SetTable& table : database.tables)
            tables.append(QJsonObject{{QStringLiteral("database"), database.fileName},
                                      {QStringLiteral("table"), table.schema.name},
                                      {QStringLiteral("rows"), table.rows.size()}});
    }
    const QString shown = QDir::toNativeSeparators(folder);
    if (json) {
        console::print(
            QJsonObject{{QStringLiteral("root"), shown}, {QStringLiteral("tables"), tables}});
        return;
    }
    console::print(QStringLiteral("The sample configuration is in ") + shown
                   + QStringLiteral(" (%1 tables).").arg(tables.size()));
    console::print(QStringLiteral("Try: velm --root \"") + shown
                   + QStringLiteral("\" lookup 310301"));
}

}  // namespace

int commands::init(const QStringList& arguments)
{
    Arguments args(
        QStringLiteral("init"), QStringLiteral("[options] DIR"),
        QStringLiteral(
            "Writes the sample configuration set into DIR/config: both databases and the text\n"
            "files of the older set. Either all of it is written or nothing."),
        {QStringLiteral("velm init demo"), QStringLiteral("velm init --force demo")});
    args.needsNoRoot();
    args.addOption(QStringLiteral("force"), QStringLiteral("Replace files that exist."));
    if (const auto ended = args.parse(arguments))
        return *ended;
    if (args.positional().size() != 1 || args.positional().first().isEmpty())
        return args.usageError(QStringLiteral("give one folder to write into"));
    const QString folder = QDir(args.positional().first()).absolutePath();

    QString problem;
    const QVector<DatabaseTables> databases = readSampleSet(problem);
    if (!problem.isEmpty())
        return cannotWrite(problem);
    FileSet files(folder + QStringLiteral("/config"));
    if (!files.prepare(problem))
        return cannotWrite(QStringLiteral("cannot write ") + problem);
    problem = stageSet(databases, files);
    if (!problem.isEmpty())
        return cannotWrite(problem);
    if (!files.lock(problem))
        return cannotWrite(QStringLiteral("cannot write ") + problem);
    const QStringList existing = files.existing();
    if (!existing.isEmpty() && !args.isSet(QStringLiteral("force")))
        return args.usageError(QStringLiteral("\"") + folder + QStringLiteral("\" holds config/")
                               + existing.join(QStringLiteral(", config/"))
                               + QStringLiteral(" already; --force replaces them"));
    if (!files.commit(problem))
        return cannotWrite(QStringLiteral("cannot write ") + problem);
    report(databases, folder, args.json());
    return ExitFine;
}
