#include "Commands.h"

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/JsonArray.h"
#include "cli/ProgressBar.h"
#include "cli/TextTable.h"

#include "common/platform/Interrupt.h"
#include "CVelmCompress.h"

#include <QFileInfo>

#include <limits>

using velm::detail::platform::interruptExitCode;
using velm::detail::platform::noteInterrupts;

namespace {

constexpr char kTimeFormat[] = "yyyy-MM-dd HH:mm:ss";

/// @return the exit code
int tellFailure(const CVelmCompress& zip)
{
    console::tell(zip.errorText());
    return interruptExitCode() != 0 ? interruptExitCode() : ExitCannotOpen;
}

/// What does not go into an archive.
QString whatIs(const QString& path)
{
    const QFileInfo file(path);
    if (file.isDir())
        return QStringLiteral("a link to a folder");
    return file.isSymbolicLink() && !file.exists() ? QStringLiteral("a link that leads nowhere")
                                                   : QStringLiteral("neither a file nor a folder");
}

int create(CVelmCompress& zip, const Arguments& args, const QStringList& names)
{
    if (names.size() < 2)
        return args.usageError(QStringLiteral("give an archive and what to put into it"));
    const bool isMade = zip.compress(names.mid(1), names.first());
    for (const QString& path : zip.leftOut())
        console::tell(QStringLiteral("left out: %1 (%2)").arg(path, whatIs(path)));
    return isMade ? ExitFine : tellFailure(zip);
}

void printTable(const QVector<VelmArchiveEntry>& entries)
{
    TextTable table({QStringLiteral("SIZE"), QStringLiteral("IN ARCHIVE"),
                     QStringLiteral("MODIFIED"), QStringLiteral("NAME")});
    for (const VelmArchiveEntry& entry : entries)
        table.addRow(
            {QString::number(entry.size), QString::number(entry.compressedSize),
             entry.modified.toString(QLatin1String(kTimeFormat)),
             entry.name + (entry.isEncrypted ? QStringLiteral(" (encrypted)") : QString())});
    table.print();
}

void printJson(const QVector<VelmArchiveEntry>& entries)
{
    JsonArray answer;
    for (const VelmArchiveEntry& entry : entries)
        answer.add(QJsonObject{{QStringLiteral("name"), entry.name},
                               {QStringLiteral("size"), entry.size},
                               {QStringLiteral("compressedSize"), entry.compressedSize},
                               {QStringLiteral("modified"), entry.modified.toString(Qt::ISODate)},
                               {QStringLiteral("crc"),
                                QString::number(entry.crc, 16).rightJustified(8, QLatin1Char('0'))},
                               {QStringLiteral("folder"), entry.isFolder},
                               {QStringLiteral("encrypted"), entry.isEncrypted}});
    answer.end();
}

int list(CVelmCompress& zip, const Arguments& args, const QStringList& names)
{
    if (names.size() != 1)
        return args.usageError(QStringLiteral("give one archive"));
    QVector<VelmArchiveEntry> entries;
    if (!zip.list(names.first(), entries))
        return tellFailure(zip);
    args.json() ? printJson(entries) : printTable(entries);
    return ExitFine;
}

int extract(CVelmCompress& zip, const Arguments& args, const QStringList& names)
{
    if (names.isEmpty())
        return args.usageError(QStringLiteral("give an archive"));
    const QString into = args.value(QStringLiteral("into"));
    const bool isDone =
        zip.extract(names.first(), into.isEmpty() ? QStringLiteral(".") : into, names.mid(1));
    return isDone ? ExitFine : tellFailure(zip);
}

int test(CVelmCompress& zip, const Arguments& args, const QStringList& names)
{
    if (names.size() != 1)
        return args.usageError(QStringLiteral("give one archive"));
    if (!zip.test(names.first()))
        return tellFailure(zip);
    console::print(QStringLiteral("%1: every entry is whole").arg(names.first()));
    return ExitFine;
}

using Operation = int (*)(CVelmCompress& zip, const Arguments& args, const QStringList& names);

Operation operationOf(const QString& name)
{
    if (name == QLatin1String("create"))
        return &create;
    if (name == QLatin1String("list"))
        return &list;
    if (name == QLatin1String("extract"))
        return &extract;
    return name == QLatin1String("test") ? &test : nullptr;
}

/// Reads a number from an option. @return false if there is none in it
bool readNumber(const Arguments& args, const char* option, qint64 least, qint64 most,
                qint64& number)
{
    if (!args.isSet(QLatin1String(option)))
        return true;
    bool isNumber = false;
    number = args.value(QLatin1String(option)).toLongLong(&isNumber);
    return isNumber && number >= least && number <= most;
}

/// @return what is wrong with the options; empty if nothing is
QString applyOptions(const Arguments& args, CVelmCompress& zip)
{
    qint64 level = -1;
    qint64 bytes = 0;
    qint64 ratio = 0;
    if (!readNumber(args, "level", 0, 9, level))
        return QStringLiteral("--level takes a number from 0 to 9");
    if (!readNumber(args, "most-bytes", 0, std::numeric_limits<qint64>::max(), bytes))
        return QStringLiteral("--most-bytes takes a number of bytes");
    if (!readNumber(args, "most-ratio", 1, std::numeric_limits<int>::max(), ratio))
        return QStringLiteral("--most-ratio takes a number from 1 on");
    zip.setLevel(static_cast<int>(level));
    if (args.isSet(QStringLiteral("most-bytes")))
        zip.setMostBytes(bytes);
    if (ratio > 0)
        zip.setMostRatio(static_cast<int>(ratio));
    zip.setOverwrites(args.isSet(QStringLiteral("force")));
    return QString();
}

void addOptions(Arguments& args)
{
    args.needsNoRoot();
    args.addOption(QStringLiteral("into"),
                   QStringLiteral("extract: the folder to write into; else this one."),
                   QStringLiteral("DIR"));
    args.addOption(QStringLiteral("force"), QStringLiteral("Replace files that exist."));
    args.addOption(QStringLiteral("level"),
                   QStringLiteral("create: 0 (stored) to 9 (smallest); else 6."),
                   QStringLiteral("N"));
    args.addOption(QStringLiteral("most-bytes"),
                   QStringLiteral("The most that is taken out of an archive; else 4 GiB."),
                   QStringLiteral("N"));
    args.addOption(QStringLiteral("most-ratio"),
                   QStringLiteral("How many times larger an entry may become; else 100."),
                   QStringLiteral("N"));
}

}  // namespace

int commands::zip(const QStringList& arguments)
{
    Arguments args(
        QStringLiteral("zip"),
        QStringLiteral("[options] create|list|extract|test ARCHIVE [NAME...]"),
        QStringLiteral("Makes, lists, extracts and tests zip archives. An archive is there as a\n"
                       "whole or not at all; files are put into their places when all of them\n"
                       "have been extracted."),
        {QStringLiteral("velm zip create drawings.zip drawings"),
         QStringLiteral("velm zip list drawings.zip"),
         QStringLiteral("velm zip extract drawings.zip --into copy"),
         QStringLiteral("velm zip test drawings.zip")});
    addOptions(args);
    if (const auto ended = args.parse(arguments))
        return *ended;
    CVelmCompress zip;
    const QString problem = applyOptions(args, zip);
    const QString name = args.positional().value(0);
    const Operation operation = operationOf(name);
    if (!problem.isEmpty())
        return args.usageError(problem);
    if (!operation)
        return args.usageError(
            name.isEmpty()
                ? QStringLiteral("which of create, list, extract and test?")
                : QStringLiteral("it is create, list, extract or test, not \"%1\"").arg(name));
    if (args.json() && name != QLatin1String("list"))
        return args.usageError(QStringLiteral("--json is for list: %1 has no answer").arg(name));
    ProgressBar bar;
    zip.setProgress([&bar](const QString& entry, qint64 done, qint64 total) {
        bar.show(entry, done, total);
        return interruptExitCode() == 0;
    });
    noteInterrupts();
    return operation(zip, args, args.positional().mid(1));
}
