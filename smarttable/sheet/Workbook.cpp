#include "smarttable/sheet/Workbook.h"

#include "smarttable/sheet/SheetNames.h"
#include "smarttable/xml/Elements.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>

namespace SmartTable::detail {

namespace {

constexpr char kSpace[] = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr char kRelations[] = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
constexpr char kTypeStem[] = "application/vnd.openxmlformats-officedocument.spreadsheetml.";

/// The elements of a workbook in the order that the standard wants (18.2.27).
constexpr std::array<const char*, 17> kOrder{
    "fileVersion",  "fileSharing",   "workbookPr",     "workbookProtection",
    "bookViews",    "sheets",        "functionGroups", "externalReferences",
    "definedNames", "calcPr",        "oleSize",        "customWorkbookViews",
    "pivotCaches",  "webPublishing", "fileRecoveryPr", "webPublishObjects",
    "extLst"};

QString typeOf(const char* name)
{
    return QLatin1String(kTypeStem) + QLatin1String(name) + QLatin1String("+xml");
}

QString relationType(const char* name)
{
    return QLatin1String(kRelations) + QLatin1Char('/') + QLatin1String(name);
}

/// The first relation of a type, whose address ends so in both forms of the standard.
const Relation* relationEnding(const Relations& relations, const char* name)
{
    const QString end = QLatin1Char('/') + QLatin1String(name);
    for (const Relation& relation : relations.all()) {
        if (!relation.isExternal && relation.type.endsWith(end))
            return &relation;
    }
    return nullptr;
}

/// The attribute "id" of relations, whatever their prefix.
QString relationId(pugi::xml_node element)
{
    for (pugi::xml_attribute attribute : element.attributes()) {
        const char* const colon = std::strchr(attribute.name(), ':');
        if (colon && std::strcmp(colon, ":id") == 0)
            return QString::fromUtf8(attribute.value());
    }
    return QString();
}

QByteArray bytesOf(const std::string& text)
{
    return QByteArray(text.data(), static_cast<int>(text.size()));
}

std::string_view viewOf(const QByteArray& bytes)
{
    return std::string_view(bytes.constData(), static_cast<size_t>(bytes.size()));
}

QString about(const QString& part, const QString& problem)
{
    return problem.isEmpty() ? problem : part + QStringLiteral(": ") + problem;
}

}  // namespace

Workbook::Workbook() : m_book("workbook", kSpace), m_bookPart(QStringLiteral("/xl/workbook.xml"))
{
    pugi::xml_node root = m_book.changedRoot();
    setAttribute(root, "xmlns:r", QLatin1String(kRelations));
    bookElement("sheets");
    m_isBookChanged = true;
    m_package.write(m_bookPart, m_book.text(), typeOf("sheet.main"));
    Relations relations;
    relations.add(relationType("officeDocument"), m_bookPart);
    m_package.setRelations(QStringLiteral("/"), relations);
    m_stylesPart = QStringLiteral("/xl/styles.xml");
    m_package.write(m_stylesPart, m_styles.xml(), typeOf("styles"));
    Relations ofBook(m_bookPart);
    ofBook.add(relationType("styles"), m_stylesPart);
    m_package.setRelations(m_bookPart, ofBook);
}

Workbook::~Workbook()
{
    for (const SheetPointer& sheet : m_sheets)
        sheet->workbook = nullptr;
}

QString Workbook::load(const QString& file)
{
    try {
        QString problem = m_package.load(file);
        return problem.isEmpty() ? readBook() : problem;
    } catch (const std::bad_alloc&) {
        return QStringLiteral("out of memory");
    }
}

QString Workbook::readBook()
{
    const Relations ofPackage = m_package.relations(QStringLiteral("/"));
    const Relation* const main = relationEnding(ofPackage, "officeDocument");
    if (!main || !m_package.has(main->target))
        return QStringLiteral("it is no workbook: its main part is missing");
    m_bookPart = main->target;
    QByteArray xml;
    QString problem = m_package.read(m_bookPart, xml);
    if (problem.isEmpty())
        problem = m_book.read(xml, "workbook");
    if (!problem.isEmpty())
        return about(m_bookPart, problem);
    const Relations relations = m_package.relations(m_bookPart);
    m_isBookChanged = false;
    problem = readSheets(relations);
    if (problem.isEmpty())
        problem = readTexts(relations);
    return problem.isEmpty() ? readStyles(relations) : problem;
}

/// Sheets of charts, dialogs and macros stay where they are, and are not told.
QString Workbook::readSheets(const Relations& relations)
{
    const pugi::xml_node list = childNamed(m_book.root(), "sheets");
    for (pugi::xml_node element : list.children()) {
        if (std::strcmp(localName(element), "sheet") != 0)
            continue;
        const Relation* const relation = relations.find(relationId(element));
        if (!relation || !m_package.has(relation->target))
            return about(m_bookPart, QStringLiteral("a sheet has no part"));
        if (!relation->type.endsWith(QLatin1String("/worksheet")))
            continue;
        auto sheet = std::make_shared<Sheet>();
        sheet->workbook = this;
        sheet->id = static_cast<int>(m_sheets.size()) + 1;
        sheet->name = attributeOf(element, "name");
        sheet->part = relation->target;
        m_sheets.push_back(sheet);
    }
    return QString();
}

/// The part to which the workbook has a relation of that type; no content if there is none.
QString Workbook::readRelated(const Relations& relations, const char* type, QString& part,
                              QByteArray& content) const
{
    const Relation* const relation = relationEnding(relations, type);
    part = relation ? relation->target : QString();
    return relation && m_package.has(part) ? about(part, m_package.read(part, content)) : QString();
}

QString Workbook::readTexts(const Relations& relations)
{
    QByteArray xml;
    QString problem = readRelated(relations, "sharedStrings", m_textsPart, xml);
    if (!problem.isEmpty() || xml.isEmpty())
        return problem;
    return about(m_textsPart, m_texts.load(viewOf(xml)));
}

QString Workbook::readStyles(const Relations& relations)
{
    QByteArray xml;
    QString problem = readRelated(relations, "styles", m_stylesPart, xml);
    if (!problem.isEmpty() || xml.isEmpty())
        return problem;
    return about(m_stylesPart, m_styles.read(xml));
}

Workbook::SheetPointer Workbook::find(int id) const
{
    const auto found = std::find_if(m_sheets.begin(), m_sheets.end(),
                                    [id](const SheetPointer& sheet) { return sheet->id == id; });
    return found == m_sheets.end() ? SheetPointer() : *found;
}

Workbook::SheetPointer Workbook::find(const QString& name) const
{
    const auto found =
        std::find_if(m_sheets.begin(), m_sheets.end(), [&name](const SheetPointer& sheet) {
            return sheet->name.compare(name, Qt::CaseInsensitive) == 0;
        });
    return found == m_sheets.end() ? SheetPointer() : *found;
}

QString Workbook::open(Sheet& sheet)
{
    if (sheet.content)
        return QString();
    QByteArray xml;
    QString problem = m_package.read(sheet.part, xml);
    auto content = std::make_unique<Worksheet>();
    if (problem.isEmpty())
        problem = content->read(xml, m_texts.size());
    if (problem.isEmpty())
        sheet.content = std::move(content);
    return about(sheet.part, problem);
}

/// A chart may have the name, too.
QString Workbook::nameProblem(const QString& name, const Sheet* own) const
{
    const pugi::xml_node list = childNamed(m_book.root(), "sheets");
    for (pugi::xml_node element : list.children()) {
        const QString other = attributeOf(element, "name");
        if (other.compare(name, Qt::CaseInsensitive) == 0 && !(own && own->name == other))
            return QStringLiteral("another sheet has this name");
    }
    return sheetNameProblem(name);
}

QString Workbook::freePart(const QString& stem) const
{
    int number = 1;
    while (m_package.has(stem + QString::number(number) + QStringLiteral(".xml")))
        ++number;
    return stem + QString::number(number) + QStringLiteral(".xml");
}

QString Workbook::add(const QString& name, SheetPointer& sheet)
{
    QString problem = nameProblem(name, nullptr);
    if (!problem.isEmpty())
        return problem;
    auto added = std::make_shared<Sheet>();
    added->workbook = this;
    added->name = name;
    added->part = freePart(QStringLiteral("/xl/worksheets/sheet"));
    added->content = std::make_unique<Worksheet>();
    added->isTouched = true;
    for (const SheetPointer& other : m_sheets)
        added->id = std::max(added->id, other->id);
    ++added->id;
    m_package.write(added->part, bytesOf(added->content->xml()), typeOf("worksheet"));
    Relations relations = m_package.relations(m_bookPart);
    const QString relation = relations.add(relationType("worksheet"), added->part);

    const pugi::xml_node list = bookElement("sheets");
    unsigned number = 0;
    for (pugi::xml_node element : list.children())
        number = std::max(number, element.attribute("sheetId").as_uint());
    const pugi::xml_node element = appendChild(list, "sheet");
    setAttribute(element, "name", name);
    setAttribute(element, "sheetId", QString::number(number + 1));
    setAttribute(element, "xmlns:r", QLatin1String(kRelations));
    setAttribute(element, "r:id", relation);
    m_package.setRelations(m_bookPart, relations);
    m_isBookChanged = true;
    m_sheets.push_back(added);
    sheet = added;
    return QString();
}

/// The element of the workbook's part, to be changed; it is made if it is not there.
pugi::xml_node Workbook::bookElement(const char* name)
{
    return elementInOrder(m_book.changedRoot(), name, kOrder.data(), kOrder.size());
}

pugi::xml_node Workbook::sheetElement(const Sheet& sheet)
{
    const pugi::xml_node list = childNamed(m_book.changedRoot(), "sheets");
    for (pugi::xml_node element : list.children()) {
        if (attributeOf(element, "name") == sheet.name)
            return element;
    }
    return pugi::xml_node();
}

void Workbook::remove(const SheetPointer& sheet)
{
    pugi::xml_node element = sheetElement(*sheet);
    Relations relations = m_package.relations(m_bookPart);
    relations.remove(relationId(element));
    m_package.setRelations(m_bookPart, relations);
    m_package.remove(sheet->part);
    element.parent().remove_child(element);
    m_isBookChanged = true;
    m_hasNewFormulas = true;
    sheet->workbook = nullptr;
    m_sheets.erase(std::find(m_sheets.begin(), m_sheets.end(), sheet));
}

QString Workbook::rename(Sheet& sheet, const QString& name)
{
    QString problem = nameProblem(name, &sheet);
    if (!problem.isEmpty())
        return problem;
    setAttribute(sheetElement(sheet), "name", name);
    sheet.name = name;
    m_isBookChanged = true;
    return QString();
}

void Workbook::writeSheets()
{
    for (const SheetPointer& sheet : m_sheets) {
        if (!sheet->isTouched)
            continue;
        m_package.write(sheet->part, bytesOf(sheet->content->xml()), QString());
        sheet->isTouched = false;
        calculateOnOpening();
    }
}

/// The values of formulas may be others now.
void Workbook::calculateOnOpening()
{
    const pugi::xml_node calculation = bookElement("calcPr");
    if (calculation.attribute("fullCalcOnLoad").as_bool())
        return;
    setAttribute(calculation, "fullCalcOnLoad", QStringLiteral("1"));
    m_isBookChanged = true;
}

void Workbook::writeTexts()
{
    if (!m_texts.isChanged())
        return;
    if (m_textsPart.isEmpty()) {
        m_textsPart = QStringLiteral("/xl/sharedStrings.xml");
        Relations relations = m_package.relations(m_bookPart);
        relations.add(relationType("sharedStrings"), m_textsPart);
        m_package.setRelations(m_bookPart, relations);
    }
    m_package.write(m_textsPart, bytesOf(m_texts.save()), typeOf("sharedStrings"));
}

void Workbook::writeStyles()
{
    if (!m_styles.isChanged())
        return;
    if (m_stylesPart.isEmpty()) {
        m_stylesPart = QStringLiteral("/xl/styles.xml");
        Relations relations = m_package.relations(m_bookPart);
        relations.add(relationType("styles"), m_stylesPart);
        m_package.setRelations(m_bookPart, relations);
    }
    m_package.write(m_stylesPart, m_styles.xml(), typeOf("styles"));
}

QString Workbook::save(const QString& file, int level)
{
    try {
        if (m_sheets.empty()) {
            SheetPointer sheet;
            add(QStringLiteral("Sheet1"), sheet);
        }
        writeSheets();
        writeTexts();
        writeStyles();
        if (m_hasNewFormulas) {
            Relations relations = m_package.relations(m_bookPart);
            const Relation* const chain = relationEnding(relations, "calcChain");
            if (chain) {
                m_package.remove(chain->target);
                relations.remove(QString(chain->id));
                m_package.setRelations(m_bookPart, relations);
            }
        }
        if (m_isBookChanged)
            m_package.write(m_bookPart, m_book.text(), QString());
        m_isBookChanged = false;
    } catch (const std::bad_alloc&) {
        return QStringLiteral("out of memory");
    }
    return m_package.save(file, level);
}

}  // namespace SmartTable::detail
