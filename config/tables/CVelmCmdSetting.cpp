#include "CVelmCmdSetting.h"

#include "config/tables/ConfigRecord.h"
#include "CVelmString.h"

using namespace velm::detail;

namespace {

QString table()
{
    return QStringLiteral("VelmCmdSetting");
}

struct Setting
{
    QString command;
    QString text;
};

constexpr Columns<Setting, 2> kColumns{
    {{"CmdName", &Setting::command}, {"CMDTEXT", &Setting::text}}};

}  // namespace

CVelmCmdSetting::CVelmCmdSetting() = default;

CVelmCmdSetting::~CVelmCmdSetting() = default;

void CVelmCmdSetting::load(CVelmDatabase& database)
{
    QMap<QString, QVariant> settings;
    const QVector<Setting> rows = recordsOf(database, table(), kColumns);
    for (const Setting& row : rows)
        settings.insert(row.command.toUpper(), CVelmString().Json2Variant(row.text));
    m_cache.swap(settings);
}

Velm::ErrorStatus CVelmCmdSetting::getCommandSettingString(const QString& cmdName, QString& text)
{
    Setting setting;
    const Velm::ErrorStatus status = readConfigRecord(table(), kColumns, cmdName, setting);
    if (status == Velm::VelmSqlExecFailed)
        return status;
    text = setting.text;
    return text.isEmpty() ? Velm::VelmSettingNotFound : Velm::VelmOk;
}

Velm::ErrorStatus CVelmCmdSetting::getCommandSettingVariant(const QString& cmdName, QVariant& value)
{
    QString text;
    const Velm::ErrorStatus status = getCommandSettingString(cmdName, text);
    if (status == Velm::VelmOk)
        value = CVelmString().Json2Variant(text);
    return status;
}

Velm::ErrorStatus CVelmCmdSetting::getCommandSettingVariantMap(const QString& cmdName,
                                                               QMap<QString, QVariant>& map)
{
    QVariant value;
    const Velm::ErrorStatus status = getCommandSettingVariant(cmdName, value);
    if (status != Velm::VelmOk)
        return status;
    if (value.type() != QVariant::Map)
        return Velm::VelmSettingConvertFailed;
    map = value.toMap();
    return Velm::VelmOk;
}

Velm::ErrorStatus CVelmCmdSetting::getCommandSettingVariantList(const QString& cmdName,
                                                                QList<QVariant>& list)
{
    QVariant value;
    const Velm::ErrorStatus status = getCommandSettingVariant(cmdName, value);
    if (status != Velm::VelmOk)
        return status;
    if (value.type() != QVariant::List)
        return Velm::VelmSettingConvertFailed;
    list = value.toList();
    return Velm::VelmOk;
}

Velm::ErrorStatus CVelmCmdSetting::getCommandSettingStringList(const QString& cmdName,
                                                               QStringList& list)
{
    QList<QVariant> elements;
    const Velm::ErrorStatus status = getCommandSettingVariantList(cmdName, elements);
    if (status != Velm::VelmOk)
        return status;
    for (const QVariant& element : qAsConst(elements)) {
        const QString text = element.toString();
        if (!text.isEmpty())
            list.append(text);
    }
    return Velm::VelmOk;
}

Velm::ErrorStatus CVelmCmdSetting::getCommandVersion(const QString& cmdName, QStringList& versions)
{
    const QString name = cmdName.toUpper();
    if (m_cache.contains(name))
        return Velm::VelmNotFound;
    const QVariant& setting = m_cache[name];  // enters the name, so the next call finds it
    if (setting.type() == QVariant::Map)
        versions = setting.toMap().keys();
    return Velm::VelmOk;
}
