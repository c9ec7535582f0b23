#include "crypt/KeySource.h"

#include "cli/Arguments.h"
#include "cli/Console.h"

#include "common/files/SystemFile.h"
#include "common/platform/Terminal.h"

#include <algorithm>

namespace {

constexpr int kKeyBytes = 8;

QString readFile(const QString& path, QString& key)
{
    constexpr qint64 kMost = 4096;
    velm::detail::SystemFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return path + QStringLiteral(": ") + file.errorString();
    QByteArray line = file.read(kMost);
    const int end = line.indexOf('\n');
    line.truncate(end < 0 ? line.size() : end);
    if (line.endsWith('\r'))
        line.chop(1);
    key = QString::fromLocal8Bit(line);
    return key.isEmpty() ? path + QStringLiteral(": its first line, the key, is empty") : QString();
}

QString ask(bool isNew, QString& key)
{
    using velm::detail::platform::readHidden;
    if (!readHidden(QStringLiteral("Key: "), key))
        return QStringLiteral("no key was given; there are --key-file and --key-env, too");
    QString again = key;
    if (isNew && !readHidden(QStringLiteral("The same key again: "), again))
        return QStringLiteral("no key was given");
    if (again != key)
        return QStringLiteral("these are two keys");
    if (std::any_of(key.cbegin(), key.cend(), [](QChar character) { return character < u' '; }))
        return QStringLiteral("the key holds a control character, of an arrow key say");
    return key.isEmpty() ? QStringLiteral("the key is empty") : QString();
}

QString readAny(const Arguments& args, bool isNew, QString& key)
{
    if (args.isSet(QStringLiteral("key-file")))
        return readFile(args.value(QStringLiteral("key-file")), key);
    if (args.isSet(QStringLiteral("key-env"))) {
        const QString name = args.value(QStringLiteral("key-env"));
        key = QString::fromLocal8Bit(qgetenv(name.toLocal8Bit().constData()));
        return key.isEmpty() ? QStringLiteral("the variable %1 is empty or not set").arg(name)
                             : QString();
    }
    if (!args.isSet(QStringLiteral("key")))
        return ask(isNew, key);
    key = args.value(QStringLiteral("key"));
    console::tell(QStringLiteral("warning: other users of this machine may see the key of a "
                                 "command line; --key-file and --key-env hide it"));
    return key.isEmpty() ? QStringLiteral("the key is empty") : QString();
}

}  // namespace

void keysource::addOptions(Arguments& args)
{
    args.addOption(QStringLiteral("key-file"),
                   QStringLiteral("Take the key from the first line of a file."),
                   QStringLiteral("FILE"));
    args.addOption(QStringLiteral("key-env"),
                   QStringLiteral("Take the key from a variable of the environment."),
                   QStringLiteral("NAME"));
    args.addOption(QStringLiteral("key"),
                   QStringLiteral("The key itself, which others may see meanwhile."),
                   QStringLiteral("KEY"));
}

QString keysource::read(const Arguments& args, bool isNew, QString& key)
{
    QString problem = readAny(args, isNew, key);
    const int size = key.toLocal8Bit().size();
    if (problem.isEmpty() && size < kKeyBytes)
        console::tell(QStringLiteral("warning: the key has %1 of 8 bytes; zeros stand for the rest")
                          .arg(size));
    if (problem.isEmpty() && size > kKeyBytes)
        console::tell(
            QStringLiteral("warning: the key has %1 bytes, of which the first 8 count").arg(size));
    return problem;
}
