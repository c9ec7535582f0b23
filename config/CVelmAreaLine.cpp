#include "CVelmAreaLine.h"

#include "config/SystemConfig.h"
#include "CVelmDatabase.h"
#include "data/Statement.h"

#include <QSqlDatabase>

using namespace velm::detail;

namespace {

constexpr int kHatchColorOfUnknown = 7;

QString table()
{
    return QStringLiteral("QuobAreaLine");
}

Velm::ErrorStatus write(CVelmDatabase& database, const VelmAreaLineItem& item)
{
    const QString code =
        item.code.isNull() ? QStringLiteral("") : item.code;  // no NULL: never found
    return database.updataRecord(table(),
                                 {{QStringLiteral("CODE"), code},
                                  {QStringLiteral("LINEWIDTH"), item.linewidth},
                                  {QStringLiteral("ENTTYPE"), item.enttype},
                                  {QStringLiteral("ANNRULE"), item.annrule},
                                  {QStringLiteral("AREARULE"), item.arearule},
                                  {QStringLiteral("GROUPNAME"), item.groupname},
                                  {QStringLiteral("LINETYPESCALE"), item.linetypescale},
                                  {QStringLiteral("HATCHCOLOR"), item.hatchcolor},
                                  {QStringLiteral("HATCHBKCOLOR"), item.hatchbkcolor}},
                                 {{QStringLiteral("CODE"), code}});
}

}  // namespace

CVelmAreaLine::CVelmAreaLine() = default;

CVelmAreaLine::~CVelmAreaLine() = default;

bool CVelmAreaLine::initVelmAreaLineConfig(CVelmDatabase& db)
{
    m_items.clear();
    TableReader rows(db.getQSqlDatabase(), table());
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
    if (openSystemConfig(database) != Velm::VelmOk || write(database, item) != Velm::VelmOk)
        return false;
    m_items.insert(item.code, item);
    return true;
}

bool CVelmAreaLine::UpdateAreaLine(const QVector<VelmAreaLineItem>& items)
{
    CVelmDatabase database;
    if (openSystemConfig(database) != Velm::VelmOk)
        return false;
    int written = 0;
    for (const VelmAreaLineItem& item : items) {
        written += write(database, item) == Velm::VelmOk ? 1 : 0;
        if (lastErrorIsLock())
            break;  // each further one would wait for the lock in vain
    }
    CVelmDatabase reloaded;
    if (written > 0 && openSystemConfig(reloaded) == Velm::VelmOk)
        initVelmAreaLineConfig(reloaded);
    return written == items.size();
}
