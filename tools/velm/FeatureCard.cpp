#include "FeatureCard.h"

#include "Console.h"
#include "CVelmString.h"

#include <QJsonArray>

namespace {

constexpr int kLabelWidth = 18;

void printField(const char* label, const QString& value)
{
    const QString shown = value.isEmpty() ? QStringLiteral("-") : console::plain(value);
    console::print(QStringLiteral("    ") + console::padded(QString::fromLatin1(label), kLabelWidth)
                   + shown);
}

void printGroup(const char* name)
{
    console::print(QStringLiteral("  ") + QString::fromLatin1(name));
}

}  // namespace

QString entityTypeName(int type)
{
    switch (type) {
    case Velm::EntityGeneral:
        return QStringLiteral("general");
    case Velm::EntityText:
        return QStringLiteral("text");
    case Velm::EntitySpecialLine:
        return QStringLiteral("special line");
    default:
        return QString::number(type);
    }
}

FeatureCard::FeatureCard(const QString& code, const CVelmIndex& index, const CVelmWork& work)
    : m_code(code)
{
    VelmIndexItem indexItem;
    if (index.getItem(code, indexItem) == Velm::VelmOk) {
        m_index = indexItem;
        index.getEntType(code, m_entityType);
    }
    VelmWorkItem workItem;
    if (work.getWorkItem(code, workItem) == Velm::VelmOk)
        m_work = workItem;
}

void FeatureCard::print() const
{
    const QString title = m_index ? m_code + QLatin1Char(' ') + m_index->name : m_code;
    console::print(console::heading(console::plain(title)));
    if (m_index) {
        printGroup("feature");
        printField("entity type", entityTypeName(m_entityType));
        printField("line type", m_index->ltype);
        printField("width", CVelmString::Double2QString(m_index->width));
        printField("user code", m_index->usecode);
        printField("GIS table", m_index->table);
        printField("extension tables", m_index->exttable.join(QStringLiteral(", ")));
    }
    if (m_work) {
        printGroup("drawing");
        printField("layer", m_work->layer);
        printField("colour", QString::number(m_work->color));
        printField("entity type", entityTypeName(m_work->enttype));
        printField("parameter 1", m_work->par1);
        printField("parameter 2", m_work->par2);
        printField("text", m_work->text);
    }
}

QJsonObject FeatureCard::toJson() const
{
    QJsonObject index;
    if (m_index) {
        index = {
            {QStringLiteral("name"), m_index->name},
            {QStringLiteral("entityType"), m_entityType},
            {QStringLiteral("lineType"), m_index->ltype},
            {QStringLiteral("width"), m_index->width},
            {QStringLiteral("userCode"), m_index->usecode},
            {QStringLiteral("gisTable"), m_index->table},
            {QStringLiteral("extensionTables"), QJsonArray::fromStringList(m_index->exttable)}};
    }
    QJsonObject work;
    if (m_work) {
        work = {{QStringLiteral("layer"), m_work->layer},
                {QStringLiteral("colour"), m_work->color},
                {QStringLiteral("entityType"), m_work->enttype},
                {QStringLiteral("parameter1"), m_work->par1},
                {QStringLiteral("parameter2"), m_work->par2},
                {QStringLiteral("text"), m_work->text}};
    }
    return {{QStringLiteral("code"), m_code},
            {QStringLiteral("found"), isFound()},
            {QStringLiteral("index"), m_index ? QJsonValue(index) : QJsonValue()},
            {QStringLiteral("work"), m_work ? QJsonValue(work) : QJsonValue()}};
}
