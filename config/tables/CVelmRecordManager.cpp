#include "CVelmRecordManager.h"

#include "config/documents/DocumentNames.h"
#include "config/documents/GenusLayout.h"
#include "config/tables/RecordColumns.h"
#include "CVelmReadGlobaldefinesTable.h"
#include "data/access/ConfigSources.h"
#include "data/access/TableReader.h"

#include <QRegularExpression>

using namespace velm::detail;

namespace {

constexpr Columns<VelmRecordConfigType, 5> kTypeColumns{{{"CODE", &VelmRecordConfigType::code},
                                                         {"NAME", &VelmRecordConfigType::name},
                                                         {"EXTEND", &VelmRecordConfigType::extend},
                                                         {"TABLE", &VelmRecordConfigType::table},
                                                         {"TYPE", &VelmRecordConfigType::type}}};

constexpr Columns<VelmRecordConfig, 4> kConfigColumns{
    {{"CODE", &VelmRecordConfig::code},
     {"SHOWFIELD", &VelmRecordConfig::showField},
     {"WRITETABLE", &VelmRecordConfig::writeTable},
     {"ACTUALFIELD", &VelmRecordConfig::actualField}}};

}  // namespace

CVelmRecordManager::CVelmRecordManager()
{
    loadAlone(
        QStringLiteral("record configuration"), [this](ConfigSources& sources) { load(sources); },
        [this] {
            m_pipeFields.clear();
            m_types.clear();
            m_configs.clear();
        });
}

CVelmRecordManager::CVelmRecordManager(std::nullptr_t) {}

CVelmRecordManager::~CVelmRecordManager() = default;

void CVelmRecordManager::load(ConfigSources& sources)
{
    InitPIPSysConfig(sources.pipe());
    InitRecordConfigType(sources.system());
    InitRecordConfig(sources.system());
}

bool CVelmRecordManager::InitPIPSysConfig(const CVelmDatabase& database)
{
    TableReader rows(database, QStringLiteral("PIP_SysConfig"));
    const int type = rows.column(QStringLiteral("FIELDTYPE"));
    const int name = rows.column(QStringLiteral("FIELDNAME"));
    m_pipeFields.clear();
    while (rows.next())
        m_pipeFields.insert(integerOf(rows.value(type)), rows.text(name));
    if (rows.brokeOff())
        m_pipeFields.clear();
    return database.isOpen();
}

bool CVelmRecordManager::InitRecordConfigType(const CVelmDatabase& database)
{
    m_types.clear();
    const auto types = recordsOf(database, QStringLiteral("RecordConfigType"), kTypeColumns);
    for (const VelmRecordConfigType& type : types)
        m_types.insert(type.code, type);
    return database.isOpen();
}

bool CVelmRecordManager::InitRecordConfig(const CVelmDatabase& database)
{
    m_configs.clear();
    auto configs = recordsOf(database, QStringLiteral("RecordConfig"), kConfigColumns);
    for (VelmRecordConfig& config : configs) {
        config.showField = IndexToString(config.showField);
        config.actualField = IndexToString(config.actualField);
        m_configs[config.code].append(config);
    }
    return database.isOpen();
}

QString CVelmRecordManager::IndexToString(const QString& text) const
{
    static const QRegularExpression decimalInteger(QStringLiteral("^\\s*[+-]?[0-9]+\\s*$"));
    if (!decimalInteger.match(text).hasMatch())
        return text;
    bool isKnown = false;  // a number that no int holds is unknown
    const int number = text.toInt(&isKnown);
    return isKnown ? getPIPSysConfigInformation(number) : QString();
}

QString CVelmRecordManager::getPIPSysConfigInformation(int type) const
{
    return m_pipeFields.value(type);
}

bool CVelmRecordManager::getRecordConfigType(QMap<QString, VelmRecordConfigType>& types) const
{
    types = m_types;
    return !types.isEmpty();
}

bool CVelmRecordManager::getRecordConfigType(const QString& code, VelmRecordConfigType& type) const
{
    const auto it = m_types.constFind(code);
    if (it == m_types.cend())
        return false;
    type = *it;
    return true;
}

bool CVelmRecordManager::getRecordConfig(const QString& code,
                                         QVector<VelmRecordConfig>& configs) const
{
    auto it = m_configs.constFind(code);
    if (it == m_configs.cend())
        it = m_configs.constFind(QStringLiteral("[Default]"));
    if (it == m_configs.cend())
        return false;
    configs = *it;
    return true;
}

bool CVelmRecordManager::getGenusDatabase(VelmRecordGenusDatabase& layout) const
{
    QString text;
    if (!CVelmReadGlobaldefinesTable::Instance()->get_value(documents::genusLayout(), text))
        return false;
    const auto read = parseGenusLayout(text, logAs(QStringLiteral("graphic-attribute library")));
    if (read)
        layout = *read;
    return read.has_value();
}
