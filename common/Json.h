#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <exception>

#include <rapidjson/document.h>

/// JSON documents in memory. Texts are UTF-16 throughout, so no QString is converted, and offsets
/// count its characters.
namespace velm::detail::json {

using Encoding = rapidjson::UTF16<char16_t>;
using Document = rapidjson::GenericDocument<Encoding>;
using Value = rapidjson::GenericValue<Encoding>;
using Allocator = Document::AllocatorType;

/// What is wrong with a JSON text, or with some members of a document: one message for each.
/// The only exception of the library, with ParseError; it is caught at the library's public edge.
class Error : public std::exception
{
public:
    explicit Error(const QStringList& messages);

    const QStringList& messages() const { return m_messages; }
    /// All messages, a line each, in UTF-8.
    const char* what() const noexcept override { return m_what.constData(); }

private:
    QStringList m_messages;
    QByteArray m_what;
};

/// A text is no JSON.
class ParseError : public Error
{
public:
    explicit ParseError(const QString& message) : Error({message}) {}
};

/// Objects and arrays may be nested this deep; what goes deeper is a parse error.
constexpr int kDeepestNesting = 512;

/// The document that @p text holds. Throws ParseError.
Document parse(const QString& text);

/// @p value as text, without blanks.
QString toText(const Value& value);

/// A JSON string, copied into the document of @p allocator.
Value toJson(const QString& text, Allocator& allocator);

/// The text of a JSON string.
QString toQString(const Value& string);

}  // namespace velm::detail::json
