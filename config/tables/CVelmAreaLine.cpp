#include "CVelmAreaLine.h"

#include "common/host/HostCalls.h"
#include "config/tables/AreaLines.h"
#include "config/tables/RecordColumns.h"
#include "CVelmDatabase.h"
#include "data/access/ConfigDatabase.h"
#include "data/access/SystemConfig.h"
#include "data/access/TableReader.h"
#include "data/sql/WriteTransaction.h"

#include <new>

using namespace velm::detail;

namespace {

constexpr int kHatchColorOfUnknown = 7;

QString tableName()
{
    return QStringLiteral("QuobAreaLine");
}

constexpr Columns<VelmAreaLineItem, 9> kColumns{
    {{"CODE", &VelmAreaLineItem::code},
     {"LINEWIDTH", &VelmAreaLineItem::linewidth},
     {"ENTTYPE", &VelmAreaLineItem::enttype},
     {"ANNRULE", &VelmAreaLineItem::annrule},
     {"AREARULE", &VelmAreaLineItem::arearule},
     {"GROUPNAME", &VelmAreaLineItem::groupname},
     {"LINETYPESCALE", &VelmAreaLineItem::linetypescale},
     {"HATCHCOLOR", &VelmAreaLineItem::hatchcolor},
     {"HATCHBKCOLOR", &VelmAreaLineItem::hatchbkcolor}}};

/// @p table is the name under which it is stored.
Velm::ErrorStatus write(CVelmDatabase& database, const QString& table, const VelmAreaLineItem& item)
{
    const Record key = {{QStringLiteral("CODE"), item.code}};
    return database.updataRecord(table, withoutNullTexts(valuesOf(item, kColumns)),
                                 withoutNullTexts(key));
}

/// Writes items as one transaction. @return how many were written; -1, and then none, if another
/// program locks the database or the changes cannot be kept
int writeAll(CVelmDatabase& database, const QVector<VelmAreaLineItem>& items)
{
    WriteTransaction transaction(database.getQSqlDatabase());
    QString table = tableName();
    if (transaction.error().isValid() || storedTable(database, table) != Velm::VelmOk)
        return -1;
    int written = 0;
    for (const VelmAreaLineItem& item : items) {
        const bool isWritten = write(database, table, item) == Velm::VelmOk;
        if (!isWritten && transaction.isLost())
            return -1;
        written += isWritten ? 1 : 0;
    }
    return transaction.commit().isValid() ? -1 : written;
}

}  // namespace

bool velm::detail::loadAreaLines(const CVelmDatabase& database,
                                 QMap<QString, VelmAreaLineItem>& items)
{
    items.clear();
    TableReader rows(database, tableName());
    const BoundColumns bound(rows, kColumns);
    while (rows.next()) {
        const VelmAreaLineItem item = bound.record();
        items.insert(items.cend(), item.code, item);
    }
    if (rows.brokeOff())
        items.clear();
    return items.isEmpty();
}

CVelmAreaLine::CVelmAreaLine() = default;

CVelmAreaLine::~CVelmAreaLine() = default;

bool CVelmAreaLine::initVelmAreaLineConfig(CVelmDatabase& db)
{
    return loadAreaLines(db, m_items);
}

bool CVelmAreaLine::isValidCode(const QString& code) const
{
    return m_items.contains(code);
}

bool CVelmAreaLine::GetAreaLineItem(VelmAreaLineItem& item, const QString& code) const
{
    const auto it = m_items.constFind(code);
    if (it == m_items.cend())
        return false;
    item = *it;
    return true;
}

/// The item of a code; that of an unknown one tells what unknown codes are.
VelmAreaLineItem CVelmAreaLine::item(const QString& code) const
{
    VelmAreaLineItem item;
    item.hatchcolor = kHatchColorOfUnknown;
    item.hatchbkcolor = kHatchColorOfUnknown;
    GetAreaLineItem(item, code);
    return item;
}

int CVelmAreaLine::GetAreaLineHatchColor(const QString& code) const
{
    return item(code).hatchcolor;
}

int CVelmAreaLine::GetAreaLineHatchBKColor(const QString& code) const
{
    return item(code).hatchbkcolor;
}

double CVelmAreaLine::GetAreaLineLineWidth(const QString& code) const
{
    return item(code).linewidth;
}

double CVelmAreaLine::GetAreaLineLineTypeScale(const QString& code) const
{
    return item(code).linetypescale;
}

QString CVelmAreaLine::GetAreaLineEntType(const QString& code)
{
    return item(code).enttype;
}

QString CVelmAreaLine::GetAreaLineAnnRule(const QString& code)
{
    return item(code).annrule;
}

QString CVelmAreaLine::GetAreaLineAreaRule(const QString& code)
{
    return item(code).arearule;
}

QString CVelmAreaLine::GetAreaLineGroupName(const QString& code)
{
    return item(code).groupname;
}

QVector<VelmAreaLineItem> CVelmAreaLine::GetAllAreaLineArray()
{
    return m_items.values().toVector();
}

bool CVelmAreaLine::addAreaLineItem(const VelmAreaLineItem& item)
{
    CVelmDatabase database;
    QString table = tableName();
    if (openForWriting(database) != Velm::VelmOk || storedTable(database, table) != Velm::VelmOk
        || write(database, table, item) != Velm::VelmOk)
        return false;
    m_items.insert(item.code, item);
    return true;
}

bool CVelmAreaLine::UpdateAreaLine(const QVector<VelmAreaLineItem>& items)
{
    CVelmDatabase database;
    if (openForWriting(database) != Velm::VelmOk)
        return false;
    if (items.isEmpty())
        return true;
    int written = 0;
    try {
        written = writeAll(database, items);
    } catch (const std::bad_alloc&) {
        return false;
    }
    if (written > 0)
        reload(database);
    return written == items.size();
}

/// Loads the whole table again, unless it cannot be read now.
void CVelmAreaLine::reload(CVelmDatabase& database)
{
    try {
        QMap<QString, VelmAreaLineItem> loaded;
        loadAreaLines(database, loaded);
        if (readProblems(database).isEmpty())
            m_items.swap(loaded);
    } catch (const std::bad_alloc&) {
        VELM_WARN(QStringLiteral("area lines: out of memory, the older ones stay in use"));
    }
}
