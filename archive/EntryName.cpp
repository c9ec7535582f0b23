#include "archive/EntryName.h"

#include "archive/ZipFields.h"
#include "common/platform/FileSystem.h"

#include <QRegularExpression>
#include <QStringList>
#include <QTextCodec>

#include <algorithm>

#include <zlib.h>

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

/// Whether the bytes are UTF-8, and not none.
bool decodeUtf8(const QByteArray& bytes, QString& text)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString decoded =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (bytes.isEmpty() || state.invalidChars != 0 || state.remainingChars != 0)
        return false;
    text = decoded;
    return true;
}

/// The name that the extra field 0x7075 gives in UTF-8, if it is that of the name @p bytes.
QByteArray unicodeName(const QByteArray& bytes, const QByteArray& fields)
{
    constexpr quint16 kUnicodePath = 0x7075;
    constexpr int kHead = 5;  // a version, and the checksum of the name that it stands for
    const QByteArray field = extraField(fields, kUnicodePath);
    if (field.size() <= kHead || field.at(0) != 1)
        return QByteArray();
    const uLong crc = crc32(crc32(0, nullptr, 0), reinterpret_cast<const Bytef*>(bytes.constData()),
                            static_cast<uInt>(bytes.size()));
    return fieldOf<quint32>(field, 1) == crc ? field.mid(kHead) : QByteArray();
}

}  // namespace

QString decodedEntryName(const QByteArray& bytes, const QByteArray& fields)
{
    QString name;
    if (!decodeUtf8(unicodeName(bytes, fields), name) && !decodeUtf8(bytes, name))
        name = QTextCodec::codecForName("GBK")->toUnicode(bytes);
    name.replace(QLatin1Char('\\'), QLatin1Char('/'));
    while (name.startsWith(QLatin1String("./")))
        name.remove(0, 2);
    return name;
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
