#include "smarttable/package/SmallXml.h"

#include "smarttable/package/PackageLimits.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string>

namespace SmartTable::detail {

namespace {

// Blanks between elements are kept, and what stands before the root.
constexpr unsigned kParse = pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_comments
                            | pugi::parse_pi | pugi::parse_declaration | pugi::parse_doctype;

class TextWriter : public pugi::xml_writer
{
public:
    void write(const void* data, size_t size) override
    {
        m_text.append(static_cast<const char*>(data), static_cast<int>(size));
    }
    QByteArray m_text;
};

QByteArray textOf(const pugi::xml_document& document)
{
    TextWriter writer;
    document.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
    return writer.m_text;
}

/// Throws unless there was memory for it.
template<class Made>
Made made(const Made& what)
{
    if (!what)
        throw std::bad_alloc();
    return what;
}

QString tooMuch()
{
    return QStringLiteral("it has more than %1 bytes, or %2 elements and attributes")
        .arg(kMostSmallXmlBytes)
        .arg(kMostSmallXmlItems);
}

/// No more elements and attributes than that are in a text, in any encoding.
qint64 mostItems(const QByteArray& text)
{
    return std::count_if(text.begin(), text.end(), [](char ch) { return ch == '<' || ch == '='; });
}

/// Goes through the tree without recursion, however deep it is.
QString shapeProblem(pugi::xml_node node)
{
    int depth = 0;
    while (node) {
        if (node.type() == pugi::node_doctype)
            return QStringLiteral("it declares a document type, which no package needs");
        if (node.first_child()) {
            if (++depth > kMostSmallXmlDepth)
                return QStringLiteral("its elements are within one another more than %1 deep")
                    .arg(kMostSmallXmlDepth);
            node = node.first_child();
            continue;
        }
        while (node && !node.next_sibling()) {
            node = node.parent();
            --depth;
        }
        node = node.next_sibling();
    }
    return QString();
}

}  // namespace

SmallXml::Tree::Tree(const Tree& other) : QSharedData(other)
{
    load(textOf(other.document));
}

QString SmallXml::Tree::load(const QByteArray& text)
{
    const pugi::xml_parse_result result =
        document.load_buffer(text.constData(), static_cast<size_t>(text.size()), kParse);
    if (result.status == pugi::status_out_of_memory)
        throw std::bad_alloc();
    if (!result)
        return QStringLiteral("it is no well-formed XML: %1 (byte %2)")
            .arg(QLatin1String(result.description()))
            .arg(result.offset);
    return shapeProblem(document.first_child());
}

SmallXml::SmallXml(const char* root, const char* space) : m_tree(new Tree)
{
    pugi::xml_node declaration = made(m_tree->document.append_child(pugi::node_declaration));
    setAttribute(declaration, "version", QStringLiteral("1.0"));
    setAttribute(declaration, "encoding", QStringLiteral("UTF-8"));
    setAttribute(declaration, "standalone", QStringLiteral("yes"));
    const pugi::xml_node element = made(m_tree->document.append_child(root));
    setAttribute(element, "xmlns", QString::fromUtf8(space));
}

QString SmallXml::read(const QByteArray& text, const char* root)
{
    if (text.size() > kMostSmallXmlBytes || mostItems(text) > kMostSmallXmlItems)
        return tooMuch();
    QSharedDataPointer<Tree> read(new Tree);
    QString problem = read->load(text);
    if (!problem.isEmpty())
        return problem;
    const pugi::xml_node element = read->document.document_element();
    if (std::strcmp(localName(element), root) != 0)
        return QStringLiteral("its root is no \"%1\"").arg(QLatin1String(root));
    pugi::xml_attribute encoding = read->document.first_child().attribute("encoding");
    if (read->document.first_child().type() == pugi::node_declaration && encoding)
        made(encoding.set_value("UTF-8"));
    m_tree.swap(read);
    return QString();
}

QByteArray SmallXml::text() const
{
    return textOf(m_tree->document);
}

pugi::xml_node SmallXml::changedRoot()
{
    return m_tree->document.document_element();
}

pugi::xml_node SmallXml::append(const char* name)
{
    pugi::xml_node root = changedRoot();
    std::string whole(root.name(), localName(root));
    return made(root.append_child((whole + name).c_str()));
}

const char* localName(pugi::xml_node element)
{
    const char* colon = std::strchr(element.name(), ':');
    return colon ? colon + 1 : element.name();
}

QString attributeOf(pugi::xml_node element, const char* name)
{
    const pugi::xml_attribute attribute = element.attribute(name);
    // Not null, if it is empty.
    return attribute ? QStringLiteral("") + QString::fromUtf8(attribute.value()) : QString();
}

void setAttribute(pugi::xml_node element, const char* name, const QString& value)
{
    pugi::xml_attribute attribute = element.attribute(name);
    if (!attribute)
        attribute = made(element.append_attribute(name));
    made(attribute.set_value(value.toUtf8().constData()));
}

}  // namespace SmartTable::detail
