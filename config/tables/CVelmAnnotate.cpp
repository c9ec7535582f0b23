#include "CVelmAnnotate.h"

#include "config/tables/ConfigRecords.h"
#include "CVelmConfigManager.h"
#include "CVelmWork.h"

using namespace velm::detail;

namespace {

QString tableName()
{
    return QStringLiteral("VelmAnnotate");
}

QString keyColumn()
{
    return QStringLiteral("CODE");
}

/// Stores a number as an enumeration if it is one of @p count values from 0.
template<class Enum>
bool storeInRange(qint64 number, int count, Enum& value)
{
    if (number < 0 || number >= count)
        return false;
    value = static_cast<Enum>(number);
    return true;
}

void addWorkDefinition(const QString& code, VelmAnnItem& item)
{
    CVelmConfigManager* manager = CVelmConfigManager::Instance();
    const CVelmWork* work = manager->GetVelmWork();  // not const: that of the database
    work->get_layer(code, item.layer, false);
    work->get_color(code, item.color);
}

/// Copies a row into the item. @return VelmOk; VelmInvalidValue
Velm::ErrorStatus fill(const ConfigRecord& record, const QString& code, VelmAnnItem& item)
{
    item.code = record.text(QStringLiteral("CODE"));
    item.font = record.text(QStringLiteral("FONT"));
    item.place = record.text(QStringLiteral("PLACE"));
    item.decimal = record.integer(QStringLiteral("DECIMAL"));
    item.text = record.text(QStringLiteral("TEXT"));
    item.extdata = record.map(QStringLiteral("EXTDATA"));
    item.height = record.real(QStringLiteral("HEIGHT"));
    item.rotate = record.real(QStringLiteral("ROTATE"));
    item.factor = record.real(QStringLiteral("FACTOR"));
    item.linetype = record.real(QStringLiteral("LINETYPE"));
    addWorkDefinition(code, item);
    const bool inRange =
        storeInRange(record.wideInteger(QStringLiteral("INPUT")), 3, item.inputtype)
        && storeInRange(record.wideInteger(QStringLiteral("ANNTYPE")), 6, item.anntype)
        && storeInRange(record.wideInteger(QStringLiteral("ENTTYPE")), 9, item.enttype);
    return inRange ? Velm::VelmOk : Velm::VelmInvalidValue;
}

/// Copies one field of the item of a code.
template<class Field, class Value>
Velm::ErrorStatus getField(CVelmAnnotate& annotate, const QString& code, Field VelmAnnItem::*field,
                           Value& value)
{
    VelmAnnItem item;
    const Velm::ErrorStatus status = annotate.getAnnotateItem(code, item);
    if (status == Velm::VelmOk)
        value = item.*field;
    return status;
}

/// Towards 0; what an integer cannot hold becomes 0.
int truncated(double value)
{
    constexpr double kBound = 2147483648.0;
    return value > -kBound - 1.0 && value < kBound ? static_cast<int>(value) : 0;
}

}  // namespace

CVelmAnnotate::CVelmAnnotate() = default;

CVelmAnnotate::~CVelmAnnotate() = default;

Velm::ErrorStatus CVelmAnnotate::getAnnotateItem(const QString& code, VelmAnnItem& item)
{
    ConfigRecord record;
    const Velm::ErrorStatus status = record.read(tableName(), keyColumn(), code);
    return status == Velm::VelmOk ? fill(record, code, item) : status;
}

void CVelmAnnotate::getAnnotateItems(const QStringList& codes, const AnnotateItemVisitor& visit)
{
    ConfigRecords records(tableName(), keyColumn(), codes);
    for (const QString& code : codes) {
        ConfigRecord record;
        VelmAnnItem item;
        Velm::ErrorStatus status = records.read(code, record);
        if (status == Velm::VelmOk)
            status = fill(record, code, item);
        if (!visit(code, status, item))
            return;
    }
}

Velm::ErrorStatus CVelmAnnotate::getFont(const QString& code, QString& font)
{
    return getField(*this, code, &VelmAnnItem::font, font);
}

Velm::ErrorStatus CVelmAnnotate::getPlace(const QString& code, QString& place)
{
    return getField(*this, code, &VelmAnnItem::place, place);
}

Velm::ErrorStatus CVelmAnnotate::getDecimal(const QString& code, int& decimal)
{
    return getField(*this, code, &VelmAnnItem::decimal, decimal);
}

Velm::ErrorStatus CVelmAnnotate::getHeight(const QString& code, double& height)
{
    return getField(*this, code, &VelmAnnItem::height, height);
}

Velm::ErrorStatus CVelmAnnotate::getRotate(const QString& code, double& rotate)
{
    return getField(*this, code, &VelmAnnItem::rotate, rotate);
}

Velm::ErrorStatus CVelmAnnotate::getFactor(const QString& code, double& factor)
{
    return getField(*this, code, &VelmAnnItem::factor, factor);
}

Velm::ErrorStatus CVelmAnnotate::getLineType(const QString& code, int& linetype)
{
    double real = 0.0;
    const Velm::ErrorStatus status = getField(*this, code, &VelmAnnItem::linetype, real);
    if (status == Velm::VelmOk)
        linetype = truncated(real);
    return status;
}

Velm::ErrorStatus CVelmAnnotate::getAnnText(const QString& code, QString& text)
{
    return getField(*this, code, &VelmAnnItem::text, text);
}

Velm::ErrorStatus CVelmAnnotate::getAnnType(const QString& code, Velm::AnnType& type)
{
    return getField(*this, code, &VelmAnnItem::anntype, type);
}

Velm::ErrorStatus CVelmAnnotate::getEntType(const QString& code, Velm::EntityType& type)
{
    return getField(*this, code, &VelmAnnItem::enttype, type);
}

Velm::ErrorStatus CVelmAnnotate::getInputType(const QString& code, Velm::InputType& type)
{
    return getField(*this, code, &VelmAnnItem::inputtype, type);
}
