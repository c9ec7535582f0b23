#include "CVelmAnnotate.h"

#include "config/DatabaseWork.h"
#include "config/tables/AnnotationRanges.h"
#include "config/tables/ConfigRecord.h"
#include "config/tables/ConfigRecords.h"
#include "CVelmWork.h"

using namespace velm::detail;

namespace {

QString tableName()
{
    return QStringLiteral("VelmAnnotate");
}

/// A row of the table, with its choices as they are stored.
struct AnnRow : VelmAnnItem
{
    qint64 input = 0;
    qint64 annotation = 0;
    qint64 entity = 0;
};

constexpr Columns<AnnRow, 13> kColumns{
    {{"CODE", &AnnRow::code},
     {"FONT", &AnnRow::font},
     {"PLACE", &AnnRow::place},
     {"DECIMAL", &AnnRow::decimal},
     {"TEXT", &AnnRow::text},
     {"EXTDATA", [](const QVariant& text, AnnRow& row) { row.extdata = jsonMap(text); }},
     {"HEIGHT", &AnnRow::height},
     {"ROTATE", &AnnRow::rotate},
     {"FACTOR", &AnnRow::factor},
     {"LINETYPE", &AnnRow::linetype},
     {"INPUT", &AnnRow::input},
     {"ANNTYPE", &AnnRow::annotation},
     {"ENTTYPE", &AnnRow::entity}}};

/// Stores a number as an enumeration if it is one of 0 to @p last.
template<class Enum>
bool storeInRange(qint64 number, int last, Enum& value)
{
    if (number < 0 || number > last)
        return false;
    value = static_cast<Enum>(number);
    return true;
}

void addWorkDefinition(const QString& code, VelmAnnItem& item)
{
    const CVelmWork& work = databaseWork();
    work.get_layer(code, item.layer, false);
    work.get_color(code, item.color);
}

/// Makes the item of a row that was read. @return VelmOk; VelmInvalidValue
Velm::ErrorStatus finish(const QString& code, AnnRow& row, VelmAnnItem& item)
{
    addWorkDefinition(code, row);
    const bool inRange = storeInRange(row.input, kLastInputType, row.inputtype)
                         && storeInRange(row.annotation, kLastAnnotationType, row.anntype)
                         && storeInRange(row.entity, Velm::EntityTypeLast, row.enttype);
    item = row;
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
    AnnRow row{item};
    const Velm::ErrorStatus status = readConfigRecord(tableName(), kColumns, code, row);
    return status == Velm::VelmOk ? finish(code, row, item) : status;
}

void CVelmAnnotate::getAnnotateItems(const QStringList& codes, const AnnotateItemVisitor& visit)
{
    ConfigRecords records(tableName(), QLatin1String(kColumns.front().name), codes);
    for (const QString& code : codes) {
        QMap<QString, QVariant> values;
        VelmAnnItem item;
        Velm::ErrorStatus status = records.read(code, values);
        if (status == Velm::VelmOk) {
            AnnRow row;
            storeRow(values, kColumns, row);
            status = finish(code, row, item);
        }
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
