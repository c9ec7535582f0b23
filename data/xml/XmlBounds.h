#pragma once

#include <QString>

#include <optional>

/// What an XML text may hold. Within these bounds Qt's parser, which calls itself for whatever can
/// be nested, takes some 200 KB of the stack, and a document some hundred megabytes.
namespace velm::detail::xml {

constexpr int kMostCharacters = 8000000;  // of the text and of what its entities are replaced by
constexpr int kDeepest = 512;             // elements, and groups of a declaration
constexpr int kMostNodes = 400000;        // elements, attributes, texts and whatever else there is
constexpr int kMostAttributes = 100000;   // of one element
constexpr int kMostEntities = 2000;

// Of the literals of declarations, and of what parameter entities are replaced by: what an entity
// holds is searched for the names of all others.
constexpr int kMostDeclared = 200000;  // characters
constexpr int kMostReferences = 5000;

/// The bound that a text passes, and where.
struct Excess
{
    QString message;
    int line = 0;  ///< from 1; 0 for a text that is too long
    int column = 0;
};

/// The bound that @p text passes before it ends or turns out to be malformed; none of a text that
/// can be parsed. Comments and sections of characters hold no entities, as for the parser.
std::optional<Excess> findExcess(const QString& text);

}  // namespace velm::detail::xml
