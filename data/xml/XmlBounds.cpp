#include "data/xml/XmlBounds.h"

#include "data/xml/XmlDeclarations.h"

#include <QHash>
#include <QXmlDefaultHandler>
#include <QXmlSimpleReader>

#include <algorithm>

// Of Qt's parsers only the deprecated one builds what QDomDocument::setContent() makes of a text.
QT_WARNING_DISABLE_DEPRECATED

namespace velm::detail::xml {

namespace {

/// What an entity is replaced by.
struct Entity
{
    int size = 0;

    // of a parameter entity
    bool isParameter = false;
    bool isWhole = true;  // ends between two declarations if it begins there
    int references = 0;
    int groups = 0;   // that are opened
    int deepest = 0;  // of these within one another
};

Entity measured(const QString& text)
{
    Declarations declarations;
    for (const QChar c : text)
        declarations.read(c);
    return {text.size(),
            true,
            declarations.isBetween(),
            text.count(QLatin1Char('&')),
            text.count(QLatin1Char('(')),
            declarations.deepest()};
}

/// Adds up what the parser reads, and tells as soon as that is too much.
class Tally
{
public:
    const QString& problem() const { return m_problem; }

    void readCharacter(QChar c)
    {
        if (m_inContent)
            readContent(c);
        else
            readDeclarations(c);
    }

    // Each answers whether the text is still within the bounds.

    bool addCharacters(qint64 count)
    {
        m_characters += count;
        return check(m_characters <= kMostCharacters, "more than %1 characters with its entities",
                     kMostCharacters);
    }

    bool addNodes(int count)
    {
        m_nodes += count;
        return check(m_nodes <= kMostNodes, "more than %1 elements, attributes and texts",
                     kMostNodes);
    }

    bool openElement(int attributes)
    {
        m_inContent = true;
        return check(++m_depth <= kDeepest, "elements nested deeper than %1", kDeepest)
               && addNodes(1 + attributes);
    }

    void closeElement() { --m_depth; }

    /// The name of a parameter entity begins with "%". It has no namesake among the others, and
    /// refer() gets it without.
    bool declare(const QString& name, const QString& text)
    {
        const bool isParameter = name.startsWith(QLatin1Char('%'));
        Entity& entity = m_entities[isParameter ? name.mid(1) : name];
        entity = isParameter ? measured(text) : Entity{text.size()};
        m_included.size += name.size();  // each is searched for in each of the others
        return check(m_entities.size() <= kMostEntities, "more than %1 entities", kMostEntities)
               && checkDeclarations();
    }

    bool refer(const QString& name)
    {
        const Entity entity = m_entities.value(name);
        return addCharacters(entity.size) && (!entity.isParameter || include(entity));
    }

private:
    /// The attributes of an element are told of when it has been read.
    void readContent(QChar c)
    {
        if (c == QLatin1Char('<'))
            m_attributes = 0;
        const bool isQuote = c == QLatin1Char('"') || c == QLatin1Char('\'');
        if (isQuote && m_last == QLatin1Char('='))
            check(++m_attributes <= kMostAttributes, "more than %1 attributes of an element",
                  kMostAttributes);
        if (!c.isSpace())
            m_last = c;
    }

    void readDeclarations(QChar c)
    {
        readContent(c);
        m_declarations.read(c);
        checkDeclarations();
    }

    /// Includes a parameter entity.
    bool include(const Entity& entity)
    {
        m_included.size += entity.size;
        m_included.references += entity.references;
        m_included.deepest = std::max(m_included.deepest, entity.deepest);
        if (m_declarations.isBetween() && !entity.isWhole)
            m_declarations.loseTrack();
        m_declarations.openGroups(entity.groups);
        return checkDeclarations();
    }

    bool checkDeclarations()
    {
        const int deepest = std::max(m_declarations.deepest(), m_included.deepest);
        return check(deepest <= kDeepest, "groups nested deeper than %1", kDeepest)
               && check(m_declarations.literals() + m_included.size <= kMostDeclared,
                        "more than %1 characters in declarations", kMostDeclared)
               && check(m_declarations.references() + m_included.references <= kMostReferences,
                        "more than %1 references in declarations", kMostReferences);
    }

    bool check(bool isWithin, const char* problem, int bound)
    {
        if (!isWithin && m_problem.isEmpty())
            m_problem = QString::fromLatin1(problem).arg(bound);
        return m_problem.isEmpty();
    }

    QString m_problem;
    QHash<QString, Entity> m_entities;  // by name
    Declarations m_declarations;
    Entity m_included;
    bool m_inContent = false;
    QChar m_last;          // that is no blank
    int m_attributes = 0;  // of an element, at most
    int m_depth = 0;
    int m_nodes = 0;
    qint64 m_characters = 0;
};

class BoundedSource : public QXmlInputSource
{
public:
    BoundedSource(const QString& text, Tally& tally) : m_tally(tally) { setData(text); }

    QChar next() override
    {
        if (!m_tally.problem().isEmpty())
            return QChar(EndOfDocument);
        const QChar c = QXmlInputSource::next();
        m_tally.readCharacter(c);
        return c;
    }

private:
    Tally& m_tally;
};

/// Hands what the parser tells to a tally, which may end it.
class TallyHandler : public QXmlDefaultHandler
{
public:
    explicit TallyHandler(Tally& tally) : m_tally(tally) {}

    bool startElement(const QString&, const QString&, const QString&,
                      const QXmlAttributes& attributes) override
    {
        m_inText = false;
        return m_tally.openElement(attributes.count());
    }
    bool endElement(const QString&, const QString&, const QString&) override
    {
        m_tally.closeElement();
        m_inText = false;
        return true;
    }
    /// A text comes in parts where entities are.
    bool characters(const QString&) override
    {
        const bool isNew = !m_inText;
        m_inText = true;
        return !isNew || m_tally.addNodes(1);
    }
    bool startCDATA() override { return addNode(); }
    bool endCDATA() override
    {
        m_inText = false;
        return true;
    }
    bool comment(const QString&) override { return addNode(); }
    bool processingInstruction(const QString&, const QString&) override { return addNode(); }
    bool skippedEntity(const QString&) override { return addNode(); }
    bool notationDecl(const QString&, const QString&, const QString&) override { return addNode(); }
    bool unparsedEntityDecl(const QString&, const QString&, const QString&, const QString&) override
    {
        return addNode();
    }
    bool externalEntityDecl(const QString&, const QString&, const QString&) override
    {
        return addNode();
    }
    bool internalEntityDecl(const QString& name, const QString& value) override
    {
        return m_tally.declare(name, value);
    }
    bool startEntity(const QString& name) override { return m_tally.refer(name); }

    bool fatalError(const QXmlParseException& error) override
    {
        m_line = error.lineNumber();
        m_column = error.columnNumber();
        return false;
    }

    int line() const { return m_line; }
    int column() const { return m_column; }

private:
    bool addNode()
    {
        m_inText = false;
        return m_tally.addNodes(1);
    }

    Tally& m_tally;
    bool m_inText = false;
    int m_line = 0;
    int m_column = 0;
};

void setFeature(QXmlSimpleReader& reader, const char* name, bool on)
{
    reader.setFeature(QLatin1String(name), on);
}

}  // namespace

std::optional<Excess> findExcess(const QString& text)
{
    Tally tally;
    if (!tally.addCharacters(text.size()))
        return Excess{tally.problem()};
    BoundedSource source(text, tally);
    TallyHandler handler(tally);
    QXmlSimpleReader reader;
    setFeature(reader, "http://xml.org/sax/features/namespaces", false);
    setFeature(reader, "http://xml.org/sax/features/namespace-prefixes", true);
    setFeature(reader, "http://trolltech.com/xml/features/report-whitespace-only-CharData", false);
    setFeature(reader, "http://trolltech.com/xml/features/report-start-end-entity", true);
    reader.setContentHandler(&handler);
    reader.setDeclHandler(&handler);
    reader.setDTDHandler(&handler);
    reader.setErrorHandler(&handler);
    reader.setLexicalHandler(&handler);
    reader.parse(&source);
    if (tally.problem().isEmpty())
        return std::nullopt;
    return Excess{tally.problem(), handler.line(), handler.column()};
}

}  // namespace velm::detail::xml
