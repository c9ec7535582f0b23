#include "CVelmFrame.h"

#include "config/tables/ConfigRecord.h"

namespace {

constexpr int kFrameSizeTypeUnset = 128;

/// Copies one field of the item of a configuration.
template<class Field>
Velm::ErrorStatus getField(CVelmFrame& frame, const QString& configName,
                           Field VelmFrameItem::*field, Field& value)
{
    VelmFrameItem item;
    const Velm::ErrorStatus status = frame.getFrameItem(configName, item);
    if (status == Velm::VelmOk)
        value = item.*field;
    return status;
}

void readModes(const QMap<QString, QVariant>& modes, VelmFrameItem& item)
{
    const auto number = [&modes](const QString& key) { return modes.value(key).toInt(); };
    item.selmode = static_cast<Velm::FrameSelMode>(number(QStringLiteral("SelMode")));
    item.trimmode = static_cast<Velm::TrimMode>(number(QStringLiteral("TrimMode")));
    item.framestyle = number(QStringLiteral("FrameStyle"));
    item.framesave = static_cast<Velm::FrameSaveStyle>(number(QStringLiteral("FrameSave")));
    item.framescaletype = number(QStringLiteral("FrameScaleType"));
    const QString sizeType = QStringLiteral("FrameSizeType");
    item.framesizetype = modes.contains(sizeType) ? number(sizeType) : kFrameSizeTypeUnset;
}

}  // namespace

CVelmFrame::CVelmFrame() = default;

CVelmFrame::~CVelmFrame() = default;

Velm::ErrorStatus CVelmFrame::getFrameItem(const QString& configName, VelmFrameItem& item)
{
    velm::detail::ConfigRecord record;
    const Velm::ErrorStatus status =
        record.read(QStringLiteral("VelmFrame"), QStringLiteral("ConfigName"), configName);
    if (status != Velm::VelmOk)
        return status;
    item.configname = configName;
    item.framename = record.text(QStringLiteral("FRAMENAME"));
    readModes(record.map(QStringLiteral("FRAMEMODE")), item);
    item.frametag = record.map(QStringLiteral("FRAMETAG"));
    item.entdeploy = record.map(QStringLiteral("ENTDEPLOY"));
    item.extand = record.map(QStringLiteral("EXTAND"));
    return Velm::VelmOk;
}

Velm::ErrorStatus CVelmFrame::getFrameName(const QString& configName, QString& name)
{
    return getField(*this, configName, &VelmFrameItem::framename, name);
}

Velm::ErrorStatus CVelmFrame::getFrameTrimMode(const QString& configName, Velm::TrimMode& mode)
{
    return getField(*this, configName, &VelmFrameItem::trimmode, mode);
}

Velm::ErrorStatus CVelmFrame::getFrameSelMode(const QString& configName, Velm::FrameSelMode& mode)
{
    return getField(*this, configName, &VelmFrameItem::selmode, mode);
}

Velm::ErrorStatus CVelmFrame::getFrameSaveStyle(const QString& configName,
                                                Velm::FrameSaveStyle& style)
{
    return getField(*this, configName, &VelmFrameItem::framesave, style);
}

Velm::ErrorStatus CVelmFrame::getFrameTag(QMap<QString, QVariant>& tags, const QString& configName,
                                          const QString& tagName)
{
    VelmFrameItem item;
    const Velm::ErrorStatus status = getFrameItem(configName, item);
    if (status != Velm::VelmOk)
        return status;
    if (tagName.isEmpty())
        tags = item.frametag;
    else if (item.frametag.contains(tagName))
        tags = item.frametag.value(tagName).toMap();
    return tags.isEmpty() ? Velm::VelmNoData : Velm::VelmOk;
}
