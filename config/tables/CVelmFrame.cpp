#include "CVelmFrame.h"

#include "config/documents/FrameModes.h"
#include "config/tables/ConfigRecord.h"

using namespace velm::detail;

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

void readModes(const QVariant& text, VelmFrameItem& item)
{
    const QMap<QString, QVariant> modes = jsonMap(text);
    const auto number = [&modes](const char* key) {
        return modes.value(QLatin1String(key)).toInt();
    };
    item.selmode = static_cast<Velm::FrameSelMode>(number(framemodes::kSelection));
    item.trimmode = static_cast<Velm::TrimMode>(number(framemodes::kTrim));
    item.framestyle = number(framemodes::kStyle);
    item.framesave = static_cast<Velm::FrameSaveStyle>(number(framemodes::kSave));
    item.framescaletype = number(framemodes::kScaleType);
    item.framesizetype = modes.contains(QLatin1String(framemodes::kSizeType))
                             ? number(framemodes::kSizeType)
                             : kFrameSizeTypeUnset;
}

constexpr Columns<VelmFrameItem, 6> kColumns{
    {{"ConfigName", &VelmFrameItem::configname},
     {"FRAMENAME", &VelmFrameItem::framename},
     {"FRAMEMODE", &readModes},
     {"FRAMETAG", [](const QVariant& text, VelmFrameItem& item) { item.frametag = jsonMap(text); }},
     {"ENTDEPLOY",
      [](const QVariant& text, VelmFrameItem& item) { item.entdeploy = jsonMap(text); }},
     {"EXTAND", [](const QVariant& text, VelmFrameItem& item) { item.extand = jsonMap(text); }}}};

}  // namespace

CVelmFrame::CVelmFrame() = default;

CVelmFrame::~CVelmFrame() = default;

Velm::ErrorStatus CVelmFrame::getFrameItem(const QString& configName, VelmFrameItem& item)
{
    VelmFrameItem found = item;  // whose name may be what is asked for
    const Velm::ErrorStatus status =
        readConfigRecord(QStringLiteral("VelmFrame"), kColumns, configName, found);
    if (status != Velm::VelmOk)
        return status;
    found.configname = configName;  // whatever type it is stored with
    item = found;
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
