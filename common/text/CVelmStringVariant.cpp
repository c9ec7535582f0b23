#include "CVelmString.h"

#include "common/platform/Platform.h"
#include "common/text/OrEmpty.h"

#include <QColor>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QUuid>

namespace {

constexpr int kVariantDecimals = 6;

bool isFloatingPoint(const QVariant& v)
{
    return v.userType() == QMetaType::Double || v.userType() == QMetaType::Float;
}

}  // namespace

QString CVelmString::VariantToString(const QVariant& v)
{
    switch (v.userType()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Long:
        return QString::number(v.toLongLong());
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::ULong:
        return QString::number(v.toULongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return QString::number(v.toDouble(), 'f', kVariantDecimals);
    case QMetaType::QChar:
    case QMetaType::QString:
        return v.toString();
    default:
        return QString();
    }
}

QMap<QString, QString> CVelmString::VariantMapToStringMap(const QMap<QString, QVariant>& map,
                                                          bool shortDoubles)
{
    QMap<QString, QString> texts;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        const bool shorten = shortDoubles && isFloatingPoint(it.value());
        texts.insert(texts.cend(), it.key(),
                     shorten ? Double2QString(it.value().toDouble()) : VariantToString(it.value()));
    }
    return texts;
}

void CVelmString::ConstVarMap2VarMap(const QMap<QString, QVariant>& from,
                                     QMap<QString, QVariant>& to, bool overwrite)
{
    for (auto it = from.cbegin(); it != from.cend(); ++it) {
        if (overwrite || !to.contains(it.key()))
            to.insert(it.key(), it.value());
    }
}

Velm::FieldType CVelmString::QVariantType2VelmFieldType(QVariant::Type t)
{
    switch (static_cast<int>(t)) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
        return Velm::FieldInt;
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return Velm::FieldLong;
    case QMetaType::Double:
    case QMetaType::Float:
        return Velm::FieldReal;
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return Velm::FieldDate;
    default:
        return Velm::FieldText;
    }
}

short CVelmString::QVariantType2CadDataType(QVariant::Type t)
{
    switch (QVariantType2VelmFieldType(t)) {
    case Velm::FieldInt:
        return 1070;
    case Velm::FieldLong:
        return 1071;
    case Velm::FieldReal:
        return 1040;
    default:
        return 1000;
    }
}

QString CVelmString::Variant2Json(const QVariant& v)
{
    return velm::detail::orEmpty(
        [&] { return QString::fromUtf8(QJsonDocument::fromVariant(v).toJson()); });
}

QVariant CVelmString::Json2Variant(const QString& text)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
    return error.error == QJsonParseError::NoError ? document.toVariant() : QVariant();
}

VelmColor CVelmString::String2Color(const QString& text)
{
    VelmColor color;
    const QStringList parts = SplitString(text, QStringLiteral(","));
    if (parts.size() != 1 && parts.size() != 3)
        return color;
    color.r = parts[0].toInt();
    if (parts.size() == 3) {
        color.g = parts[1].toInt();
        color.b = parts[2].toInt();
    }
    return color;
}

QString CVelmString::Color2String(const QColor& c)
{
    if (!c.isValid())
        return QString();
    return QStringLiteral("%1,%2,%3").arg(c.red()).arg(c.green()).arg(c.blue());
}

QString CVelmString::ReadFile(const QString& path, QIODevice::OpenMode mode)
{
    QFile file(path);
    if (!file.open(mode))
        return QString();
    return velm::detail::orEmpty([&] {
        const QByteArray bytes = file.readAll();
        return QString::fromUtf8(bytes.constData(), bytes.size());
    });
}

bool CVelmString::WriteFile(const QString& path, const QString& text, QIODevice::OpenMode mode)
{
    QFile file(path);
    if (!file.open(mode))
        return false;
    const QByteArray bytes = text.toLocal8Bit();
    return file.write(bytes) == bytes.size() && file.flush();
}

QString CVelmString::FormatFilePath(const QString& path)
{
    return QDir::toNativeSeparators(path);
}

QString CVelmString::makeGuid()
{
    return QUuid::createUuid().toString(QUuid::Id128).toUpper();
}

QString CVelmString::GetTempFolder()
{
    return velm::detail::platform::temporaryFolder() + makeGuid();
}

QString CVelmString::GetFileMD5(const QString& path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Md5);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return QString();
    return QString::fromLatin1(hash.result().toHex());
}

QString CVelmString::encryption(const QString& text)
{
    return QString::fromLocal8Bit(text.toLocal8Bit().toBase64());
}

QString CVelmString::deciphering(const QString& text)
{
    return QString::fromLocal8Bit(QByteArray::fromBase64(text.toLocal8Bit()));
}
