#include "crypt/KeySource.h"

#include "cli/Arguments.h"
#include "cli/Console.h"

#include "common/files/SystemFile.h"
#include "common/platform/Terminal.h"

#include <QTextCodec>

#include <algorithm>

namespace {

constexpr int kKeyBytes = 8;

/// What is taken for the key must give the same bytes again: those that are no text would become
/// one and the same character.
QString decode(const QByteArray& bytes, QString& key)
{
    key = QString::fromLocal8Bit(bytes);
    if (bytes.contains('\0'))
        return QStringLiteral("it holds a NUL character");
    if (key.toLocal8Bit() != bytes)
        return QStringLiteral("it is no text in the code page of this system, ")
               + QString::fromLatin1(QTextCodec::codecForLocale()->name());
    return key.isEmpty() ? QStringLiteral("it is empty") : QString();
}

QString readFile(const QString& path, QString& key)
{
    constexpr int kMost = 4096;
    velm::detail::SystemFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return path + QStringLiteral(": ") + file.errorString();
    QByteArray line;
    while (line.size() <= kMost && !line.contains('\n')) {
        const QByteArray part = file.read(kMost);  // a pipe gives what it has
        if (part.isEmpty())
            break;
        line += part;
    }
    if (file.systemError() != 0)
        return path + QStringLiteral(": ") + file.errorString();
    const int end = line.indexOf('\n');
    line.truncate(end < 0 ? line.size() : end);
    if (line.size() > kMost)
        return path
               + QStringLiteral(": its first line, the key, has more than %1 bytes").arg(kMost);
    if (line.startsWith("\xEF\xBB\xBF"))  // some editors write it
        line.remove(0, 3);
    if (line.endsWith('\r'))
        line.chop(1);
    const QString problem = decode(line, key);
    line.fill('\0');
    return problem.isEmpty() ? QString() : path + QStringLiteral(": the key: ") + problem;
}

QString readVariable(const QString& name, QString& key)
{
    const QString problem = decode(qgetenv(name.toLocal8Bit().constData()), key);
    if (key.isEmpty())
        return QStringLiteral("the variable %1 is empty or not set").arg(name);
    return problem.isEmpty() ? QString()
                             : QStringLiteral("the key in the variable %1: ").arg(name) + problem;
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
    if (args.isSet(QStringLiteral("key-env")))
        return readVariable(args.value(QStringLiteral("key-env")), key);
    if (!args.isSet(QStringLiteral("key")))
        return ask(isNew, key);
    key = args.value(QStringLiteral("key"));
    console::tell(QStringLiteral("warning: other users of this machine may see the key of a "
                                 "command line; --key-file and --key-env hide it"));
    return key.isEmpty() ? QStringLiteral("the key is empty") : QString();
}

/// Whether the local code page has all characters of a key. A bare replacement character stands for
/// bytes that were no text.
bool isEncodable(const QString& key)
{
    return !key.contains(QChar::ReplacementCharacter)
           && QString::fromLocal8Bit(key.toLocal8Bit()) == key;
}

void warn(const QString& key)
{
    const int size = key.toLocal8Bit().size();
    if (size < kKeyBytes)
        console::tell(QStringLiteral("warning: the key has %1 of 8 bytes; zeros stand for the rest")
                          .arg(size));
    if (size > kKeyBytes)
        console::tell(
            QStringLiteral("warning: the key has %1 bytes, of which the first 8 count").arg(size));
    if (std::any_of(key.cbegin(), key.cend(), [](QChar c) { return c.unicode() > 127; }))
        console::tell(QStringLiteral("warning: the key is not ASCII alone; it is another one on a "
                                     "system with another code page than ")
                      + QString::fromLatin1(QTextCodec::codecForLocale()->name()));
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

QString keysource::wrongUsage(const Arguments& args)
{
    QStringList given;
    for (const QString& name :
         {QStringLiteral("key-file"), QStringLiteral("key-env"), QStringLiteral("key")})
        given += args.values(name);
    if (given.size() > 1)
        return QStringLiteral("give one of --key-file, --key-env and --key, once");
    const bool isNameless = given == QStringList{QString()} && !args.isSet(QStringLiteral("key"));
    return isNameless ? QStringLiteral("--key-file and --key-env need a name") : QString();
}

QString keysource::read(const Arguments& args, bool isNew, QString& key)
{
    QString problem = readAny(args, isNew, key);
    if (problem.isEmpty() && !isEncodable(key))
        problem = QStringLiteral("the key has characters that the code page of this system, %1, "
                                 "cannot hold")
                      .arg(QString::fromLatin1(QTextCodec::codecForLocale()->name()));
    if (problem.isEmpty())
        warn(key);
    return problem;
}
