#include "archive/EntryName.h"

#include "common/platform/FileSystem.h"

#include <QRegularExpression>
#include <QStringList>
#include <QTextCodec>

#include <algorithm>

namespace velm::detail {

namespace {

constexpr int kMostParts = 200;  // of a name

/// A device of Windows, which stands in every folder there, whatever follows a point.
bool isDevice(const QString& part)
{
    static const QRegularExpression devices(
        QStringLiteral("^(con|prn|aux|nul|conin\\$|conout\\$|(com|lpt)[0-9\\x{B9}\\x{B2}\\x{B3}])"
                       "[ ]*([.:].*)?$"),
        QRegularExpression::CaseInsensitiveOption);
    constexpr int kShortest = 3;
    const bool mayBe =
        part.size() >= kShortest && QStringLiteral("cpanlCPANL").contains(part.at(0));
    return mayBe && devices.match(part).hasMatch();
}

bool hasForbiddenCharacter(const QString& part)
{
    return std::any_of(part.begin(), part.end(), [](QChar ch) {
        return ch.unicode() < 0x20 || QStringLiteral("<>:\"|?*\\").contains(ch);
    });
}

QString partProblem(const QString& part)
{
    if (part == QLatin1String("..") || part == QLatin1String("."))
        return QStringLiteral("leads out of its folder");
    if (part.isEmpty())
        return QStringLiteral("is an absolute path, or has an empty part");
    if (hasForbiddenCharacter(part))
        return QStringLiteral("has a character that no file name has on Windows");
    if (isDevice(part))
        return QStringLiteral("is that of a device on Windows");
    if (part.endsWith(QLatin1Char('.')) || part.endsWith(QLatin1Char(' ')))
        return QStringLiteral("ends with a point or a blank, which Windows cuts off");
    if (!platform::canNameFile(part))
        return QStringLiteral("is too long for this system");
    return QString();
}

}  // namespace

QString decodedEntryName(const QByteArray& bytes, bool isUtf8)
{
    QTextCodec::ConverterState state;
    QString name =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    const bool isValid = state.invalidChars == 0 && state.remainingChars == 0;
    if (!isUtf8 && !isValid)
        name = QTextCodec::codecForName("GBK")->toUnicode(bytes);
    return name.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

QString entryNameProblem(const QString& name)
{
    QString path = name;
    if (path.endsWith(QLatin1Char('/')))
        path.chop(1);
    const QStringList parts = path.split(QLatin1Char('/'));
    if (parts.size() > kMostParts)
        return QStringLiteral("has too many folders");
    for (const QString& part : parts) {
        QString problem = partProblem(part);
        if (!problem.isEmpty())
            return problem;
    }
    return QString();
}

QString entryNameKey(const QString& name)
{
    QString key = name.normalized(QString::NormalizationForm_C).toCaseFolded();
    if (key.endsWith(QLatin1Char('/')))
        key.chop(1);
    return key;
}

}  // namespace velm::detail
