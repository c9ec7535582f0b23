#include "CVelmAreaLine.h"

#include "common/host/HostCalls.h"
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

/// @p table is the name under which it is stored.
Velm::ErrorStatus write(CVelmDatabase& database, const QString& table, const VelmAreaLineItem& item)
{
    const Record key = {{QStringLiteral("CODE"), item.code}};
    const Record values = {{QStringLiteral("CODE"), item.code},
                           {QStringLiteral("LINEWIDTH"), item.linewidth},
                           {QStringLiteral("ENTTYPE"), item.enttype},
                           {QStringLiteral("ANNRULE"), item.annrule},
                           {QStringLiteral("AREARULE"), item.arearule},
                           {QStringLiteral("GROUPNAME"), item.groupname},
                           {QStringLiteral("LINETYPESCALE"), item.linetypescale},
                           {QStringLiteral("HATCHCOLOR"), item.hatchcolor},
                           {QStringLiteral("HATCHBKCOLOR"), item.hatchbkcolor}};
    return database.updataRecord(table, withoutNullTexts(values), withoutNullTexts(key));
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

CVelmAreaLine::CVelmAreaLine() = default;

CVelmAreaLine::~CVelmAreaLine() = default;

bool CVelmAreaLine::initVelmAreaLineConfig(CVelmDatabase& db)
{
    m_items.clear();
    TableReader rows(db, tableName());
    const int code = rows.column(QStringLiteral("CODE"));
    const int linewidth = rows.column(QStringLiteral("LINEWIDTH"));
    const int enttype = rows.column(QStringLiteral("ENTTYPE"));
    const int annrule = rows.column(QStringLiteral("ANNRULE"));
    const int arearule = rows.column(QStringLiteral("AREARULE"));
    const int groupname = rows.column(QStringLiteral("GROUPNAME"));
    const int linetypescale = rows.column(QStringLiteral("LINETYPESCALE"));
    const int hatchcolor = rows.column(QStringLiteral("HATCHCOLOR"));
    const int hatchbkcolor = rows.column(QStringLiteral("HATCHBKCOLOR"));
    while (rows.next()) {
        VelmAreaLineItem item;
        item.code = rows.text(code);
        item.linewidth = rows.value(linewidth).toDouble();
        item.enttype = rows.text(enttype);
        item.annrule = rows.text(annrule);
        item.arearule = rows.text(arearule);
        item.groupname = rows.text(groupname);
        item.linetypescale = rows.value(linetypescale).toDouble();
        item.hatchcolor = rows.value(hatchcolor).toInt();
        item.hatchbkcolor = rows.value(hatchbkcolor).toInt();
        m_items.insert(m_items.cend(), item.code, item);
    }
    if (rows.brokeOff())
        m_items.clear();
    return m_items.isEmpty();
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
        CVelmAreaLine loaded;
        loaded.initVelmAreaLineConfig(database);
        if (readProblems(database).isEmpty())
            m_items.swap(loaded.m_items);
    } catch (const std::bad_alloc&) {
        VELM_WARN(QStringLiteral("area lines: out of memory, the older ones stay in use"));
    }
}
