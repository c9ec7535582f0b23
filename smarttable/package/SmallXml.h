#pragma once

#include <QByteArray>
#include <QSharedDataPointer>
#include <QString>

#include <pugixml.hpp>

namespace SmartTable::detail {

/// XML as a tree, for parts that are small; everything in it is kept. Refused are document type
/// declarations, and what is beyond the bounds of PackageLimits.h. A value, copied at little cost;
/// one thread at a time for each. All that makes something throws std::bad_alloc.
class SmallXml
{
public:
    /// A document with one element, of that name and namespace.
    SmallXml(const char* root, const char* space);

    /// Takes a text in any encoding of Unicode, whose root has that name, whatever its prefix.
    /// @return what is wrong, and the document is as before; empty if nothing is
    QString read(const QByteArray& text, const char* root);
    /// As UTF-8.
    QByteArray text() const;

    /// The root, to look at.
    pugi::xml_node root() const { return m_tree->document.document_element(); }
    /// The root, to be changed. What root() answered before may be that of a copy.
    pugi::xml_node changedRoot();
    /// Appends an element to the root, with the prefix of the root.
    pugi::xml_node append(const char* name);

private:
    /// Copied as text: a tree says nothing when memory runs out while it is copied.
    struct Tree : QSharedData
    {
        Tree() = default;
        Tree(const Tree& other);
        Tree& operator=(const Tree&) = delete;
        ~Tree() = default;

        QString load(const QByteArray& text);

        pugi::xml_document document;
    };

    QSharedDataPointer<Tree> m_tree;
};

/// The name of an element without its prefix.
const char* localName(pugi::xml_node element);
/// An attribute as text; null if there is none.
QString attributeOf(pugi::xml_node element, const char* name);
/// Adds an attribute, or changes its value.
void setAttribute(pugi::xml_node element, const char* name, const QString& value);

}  // namespace SmartTable::detail
