#include "Commands.h"

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/TerminalText.h"
#include "set/FileSet.h"
#include "set/TextImport.h"

#include <QDir>
#include <QFileInfo>

namespace {

int cannot(const QString& problem)
{
    console::tell(problem);
    return ExitCannotOpen;
}

QString alreadyThere(const QString& file)
{
    return QStringLiteral("\"%1\" exists; --force replaces it").arg(file);
}

/// Makes the database as a whole or not at all. @return what went wrong; empty if nothing did
QString write(const DatabaseTables& database, const QFileInfo& target, bool replace)
{
    const QString cannotWrite = QStringLiteral("cannot write ");
    FileSet files(target.absolutePath());
    QString problem;
    if (!files.prepare(problem))
        return cannotWrite + problem;
    problem = writeDatabase(database, files.stageDatabase(target.fileName()));
    if (!problem.isEmpty() || !files.lock(problem))
        return cannotWrite + problem;
    const QStringList existing = files.existing();
    if (!existing.isEmpty() && !replace)
        return alreadyThere(target.dir().filePath(existing.first()));
    return files.commit(problem) ? QString() : cannotWrite + problem;
}

QVector<SetTable> filledTables(const TextImport& import)
{
    QVector<SetTable> tables;
    for (const SetTable& table : import.database().tables) {
        if (!table.rows.isEmpty())
            tables.append(table);
    }
    return tables;
}

void printText(const TextImport& import, const QString& target)
{
    for (const UnusedLine& line : import.unused())
        console::print(console::plain(QStringLiteral("%1 line %2: ").arg(line.file).arg(line.line)
                                      + line.reason));
    const QVector<SetTable> tables = filledTables(import);
    for (const SetTable& table : tables)
        console::print(QStringLiteral("%1: %2 rows").arg(table.schema.name).arg(table.rows.size()));
    console::print(QStringLiteral("Written to ") + QDir::toNativeSeparators(target)
                   + QStringLiteral("; %1 lines not used.").arg(import.unused().size()));
}

void printJson(const TextImport& import, const QString& target)
{
    QJsonArray tables, unused;
    const QVector<SetTable> filled = filledTables(import);
    for (const SetTable& table : filled)
        tables.append(QJsonObject{{QStringLiteral("table"), table.schema.name},
                                  {QStringLiteral("rows"), table.rows.size()}});
    for (const UnusedLine& line : import.unused())
        unused.append(QJsonObject{{QStringLiteral("file"), line.file},
                                  {QStringLiteral("line"), line.line},
                                  {QStringLiteral("reason"), line.reason}});
    console::print(QJsonObject{{QStringLiteral("database"), target},
                               {QStringLiteral("tables"), tables},
                               {QStringLiteral("unused"), unused}});
}

}  // namespace

int commands::importText(const QStringList& arguments)
{
    Arguments args(
        QStringLiteral("import-text"), QStringLiteral("[options] -o FILE DIR"),
        QStringLiteral(
            "Reads index.ini, work.def and attribute.def of the folder DIR, all lines, in\n"
            "UTF-8 or GBK, and writes them into a new system configuration database.\n"
            "Exit code 1 if there are lines that could not be used; the others are in it."),
        {QStringLiteral("velm import-text -o new/config/peltaconfig.db old/config")});
    args.needsNoRoot();
    args.addOption(QStringLiteral("o"), QStringLiteral("The database to make."),
                   QStringLiteral("FILE"));
    args.addOption(QStringLiteral("force"), QStringLiteral("Replace a file that exists."));
    if (const auto ended = args.parse(arguments))
        return *ended;
    if (args.positional().size() != 1)
        return args.usageError(QStringLiteral("give one folder to read"));
    const QFileInfo target(args.value(QStringLiteral("o")));
    if (target.fileName().isEmpty())
        return args.usageError(QStringLiteral("name the database to make: -o FILE"));
    const bool replace = args.isSet(QStringLiteral("force"));
    if (target.exists() && !replace)
        return args.usageError(alreadyThere(target.filePath()));

    TextImport import;
    const QString folder = args.positional().first();
    QString problem = import.read(folder);
    if (problem.isEmpty() && import.files().isEmpty())
        problem =
            QStringLiteral("\"%1\" holds no index.ini, work.def or attribute.def").arg(folder);
    if (problem.isEmpty() && import.files().contains(target.fileName(), Qt::CaseInsensitive)
        && QFileInfo(folder).canonicalFilePath() == target.dir().canonicalPath())
        problem = QStringLiteral("\"%1\" is one of the files to read").arg(target.filePath());
    if (problem.isEmpty())
        problem = write(import.database(), target, replace);
    if (!problem.isEmpty())
        return cannot(problem);
    if (args.json())
        printJson(import, target.absoluteFilePath());
    else
        printText(import, target.absoluteFilePath());
    return import.unused().isEmpty() ? ExitFine : ExitNothingFound;
}
