#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <cstddef>
#include <exception>
#include <new>

#include <rapidjson/document.h>

/// JSON documents in memory. Texts are UTF-16 throughout, so no QString is converted, and offsets
/// count its characters.
namespace velm::detail::json {

using Encoding = rapidjson::UTF16<char16_t>;

/// Where memory runs out it throws std::bad_alloc; RapidJSON would write through a null pointer.
class Memory
{
public:
    static constexpr bool kNeedFree = true;

    void* Malloc(std::size_t size) { return Realloc(nullptr, 0, size); }
    void* Realloc(void* memory, std::size_t oldSize, std::size_t newSize);
    static void Free(void* memory);
};

using Allocator = rapidjson::MemoryPoolAllocator<Memory>;
using Document = rapidjson::GenericDocument<Encoding, Allocator, Memory>;
using Value = rapidjson::GenericValue<Encoding, Allocator>;

/// A member of a document whose value has the wrong type.
struct Mistyped
{
    QString path;    // of keys
    QString wanted;  // in words
};

/// What is wrong with a JSON text, or with some members of a document: one message for each.
/// The only exception of the library, with those derived; it is caught at the library's public
/// edge.
class Error : public std::exception
{
public:
    explicit Error(const QStringList& messages, const QVector<Mistyped>& mistyped = {});

    const QStringList& messages() const { return m_messages; }
    /// The members that they are about, if they are about members.
    const QVector<Mistyped>& mistyped() const { return m_mistyped; }
    /// All messages, a line each, in UTF-8.
    const char* what() const noexcept override { return m_what.constData(); }

private:
    QStringList m_messages;
    QVector<Mistyped> m_mistyped;
    QByteArray m_what;
};

/// A text is no JSON.
class ParseError : public Error
{
public:
    ParseError(const QString& message, int offset) : Error({message}), m_offset(offset) {}

    /// The character at which it stops being JSON, from 0.
    int offset() const { return m_offset; }

private:
    int m_offset;
};

/// Memory has run out: nothing is known of the text.
class OutOfMemory : public Error
{
public:
    OutOfMemory() : Error({QStringLiteral("out of memory")}) {}
};

/// What @p make returns. Throws OutOfMemory for std::bad_alloc.
template<class Make>
auto guarded(const Make& make)
{
    try {
        return make();
    } catch (const std::bad_alloc&) {
        throw OutOfMemory();
    }
}

/// Objects and arrays may be nested this deep; what goes deeper is a parse error.
constexpr int kDeepestNesting = 512;

/// The document that @p text holds. Throws ParseError and OutOfMemory.
Document parse(const QString& text);

/// @p value as text, without blanks. Throws OutOfMemory.
QString toText(const Value& value);

/// A JSON string, copied into the document of @p allocator.
Value toJson(const QString& text, Allocator& allocator);

/// The same value in the document of @p allocator. RapidJSON's own copying has no use for Memory.
Value copyOf(const Value& value, Allocator& allocator);

/// The text of a JSON string.
QString toQString(const Value& string);

}  // namespace velm::detail::json
