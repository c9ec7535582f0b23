#include "Commands.h"

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/ProgressBar.h"
#include "crypt/KeySource.h"

#include "common/files/SystemFile.h"
#include "common/platform/Interrupt.h"
#include "CVelmCyptionDES2.h"

#include <QFileInfo>

using velm::detail::platform::interruptExitCode;
using velm::detail::platform::noteInterrupts;

namespace {

/// What to do with which file.
struct Task
{
    bool encrypts = false;
    QString in;
    QString out;
};

/// What an encrypted file gives back otherwise than it was; empty if it is itself.
QString lossOf(const QString& path)
{
    constexpr qint64 kBlock = 8;
    velm::detail::SystemFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    if (file.size() == kBlock)
        return QStringLiteral("a file of 8 bytes comes back with 8 more");
    char last = 1;
    const bool isRead = file.seek(file.size() - 1) && file.getChar(&last);
    return isRead && last == '\0' ? QStringLiteral("it ends with zeros, which do not come back")
                                  : QString();
}

/// Why a file cannot be taken at all; empty if it can.
QString whyNotTaken(const QString& path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile() && !info.isDir())
        return QStringLiteral("it is no ordinary file");
    velm::detail::SystemFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    return file.size() == 0 ? QStringLiteral("it is empty") : QString();
}

/// Where the result goes unless it is told.
QString outOf(bool encrypts, const QString& in)
{
    const QString ending = QStringLiteral(".des");
    if (encrypts)
        return in + ending;
    return in.endsWith(ending) ? in.left(in.size() - ending.size()) : in + QStringLiteral(".plain");
}

/// @return what is wrong with the arguments; empty if nothing is
QString readTask(const Arguments& args, Task& task)
{
    const QStringList words = args.positional();
    const QString operation = words.value(0);
    if (operation != QLatin1String("encrypt") && operation != QLatin1String("decrypt"))
        return operation.isEmpty()
                   ? QStringLiteral("encrypt or decrypt?")
                   : QStringLiteral("it is encrypt or decrypt, not \"%1\"").arg(operation);
    if (words.size() != 2)
        return QStringLiteral("give one file");
    task.encrypts = operation == QLatin1String("encrypt");
    task.in = words.at(1);
    const QString out = args.value(QStringLiteral("o"));
    task.out = out.isEmpty() ? outOf(task.encrypts, task.in) : out;
    return QString();
}

/// Why the task is not to be begun without --force; empty if it is.
QString refusalOf(const Task& task)
{
    const QString loss = task.encrypts ? lossOf(task.in) : QString();
    if (!loss.isEmpty())
        return task.in + QStringLiteral(": ") + loss + QStringLiteral("; --force encrypts it");
    if (QFileInfo::exists(task.out))
        return task.out + QStringLiteral(": it is there already; --force replaces it");
    return QString();
}

/// @return why the file is not written; empty if it is
QString convert(const Task& task, const QString& key, bool overwrites)
{
    CVelmCyptionDES2 cipher;
    cipher.initializeKey(key);
    ProgressBar bar;
    const auto progress = [&](qint64 done, qint64 total) {
        bar.show(task.in, done, total);
        return interruptExitCode() == 0;
    };
    return cipher.convertFile(task.encrypts, task.in, task.out, progress, overwrites);
}

int fail(const QString& problem)
{
    console::tell(problem + QStringLiteral("; nothing was written"));
    return ExitCannotOpen;
}

void addOptions(Arguments& args)
{
    args.needsNoRoot();
    args.needsNoJson();
    args.addOption(QStringLiteral("o"),
                   QStringLiteral("The file to write; else FILE.des, and FILE without it."),
                   QStringLiteral("FILE"));
    keysource::addOptions(args);
    args.addOption(QStringLiteral("force"),
                   QStringLiteral("Replace a file that exists; encrypt what does not come back."));
}

}  // namespace

int commands::crypt(const QStringList& arguments)
{
    Arguments args(
        QStringLiteral("crypt"), QStringLiteral("[options] encrypt|decrypt FILE"),
        QStringLiteral("Encrypts a file with single DES, or decrypts one. That keeps it\n"
                       "from the curious only. Nothing tells a wrong key: decrypted with\n"
                       "one, a file is nonsense. Keep keys to ASCII: the bytes of other\n"
                       "characters differ between systems."),
        {QStringLiteral("velm crypt encrypt plan.dwg"),
         QStringLiteral("velm crypt decrypt plan.dwg.des --key-file key.txt")});
    addOptions(args);
    if (const auto ended = args.parse(arguments))
        return *ended;
    Task task;
    QString problem = readTask(args, task);
    if (problem.isEmpty())
        problem = keysource::wrongUsage(args);
    if (!problem.isEmpty())
        return args.usageError(problem);
    const bool isForced = args.isSet(QStringLiteral("force"));
    problem = whyNotTaken(task.in);
    if (!problem.isEmpty())
        return fail(task.in + QStringLiteral(": ") + problem);
    problem = isForced ? QString() : refusalOf(task);
    if (!problem.isEmpty())
        return fail(problem);

    QString key;
    problem = keysource::read(args, task.encrypts, key);
    if (!problem.isEmpty())
        return fail(problem);
    noteInterrupts();
    problem = convert(task, key, isForced);
    key.fill(QLatin1Char('\0'));
    if (!problem.isEmpty()) {
        console::tell(problem);
        return interruptExitCode() != 0 ? interruptExitCode() : ExitCannotOpen;
    }
    console::tell(QStringLiteral("written: ") + task.out);
    return ExitFine;
}
