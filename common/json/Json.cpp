#include "common/json/Json.h"

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdlib>

namespace velm::detail::json {

namespace {

using Char = Encoding::Ch;
using Size = rapidjson::SizeType;

/// Hands the parser's events on and stops it where the nesting becomes too deep: documents are
/// walked recursively later.
class DepthGuard
{
public:
    explicit DepthGuard(Document& document) : m_document(document) {}

    bool Null() { return m_document.Null(); }
    bool Bool(bool value) { return m_document.Bool(value); }
    bool Int(int value) { return m_document.Int(value); }
    bool Uint(unsigned value) { return m_document.Uint(value); }
    bool Int64(int64_t value) { return m_document.Int64(value); }
    bool Uint64(uint64_t value) { return m_document.Uint64(value); }
    bool Double(double value) { return m_document.Double(value); }
    bool RawNumber(const Char* text, Size length, bool copy)
    {
        return m_document.RawNumber(text, length, copy);
    }
    bool String(const Char* text, Size length, bool copy)
    {
        return m_document.String(text, length, copy);
    }
    bool Key(const Char* text, Size length, bool copy)
    {
        return m_document.Key(text, length, copy);
    }
    bool StartObject() { return enter() && m_document.StartObject(); }
    bool EndObject(Size members) { return leave() && m_document.EndObject(members); }
    bool StartArray() { return enter() && m_document.StartArray(); }
    bool EndArray(Size elements) { return leave() && m_document.EndArray(elements); }

private:
    bool enter() { return ++m_depth <= kDeepestNesting; }
    bool leave() { return --m_depth >= 0; }

    Document& m_document;
    int m_depth = 0;
};

QString failure(const rapidjson::ParseResult& result)
{
    return QStringLiteral("Parse json fail. err=%1. offset=%2")
        .arg(QLatin1String(rapidjson::GetParseError_En(result.Code())))
        .arg(result.Offset());
}

Document parsed(const QString& text)
{
    Document document;
    rapidjson::ParseResult result;
    auto generate = [&](Document& handler) {
        DepthGuard guard(handler);
        rapidjson::GenericReader<Encoding, Encoding, Memory> reader;
        rapidjson::GenericStringStream<Encoding> stream(
            reinterpret_cast<const Char*>(text.utf16()));
        result = reader.Parse<rapidjson::kParseFullPrecisionFlag>(stream, guard);
        return !result.IsError();
    };
    document.Populate(generate);
    if (result.IsError())
        throw ParseError(failure(result), static_cast<int>(result.Offset()));
    return document;
}

}  // namespace

void* Memory::Realloc(void* memory, std::size_t, std::size_t newSize)
{
    if (newSize == 0) {
        std::free(memory);
        return nullptr;
    }
    void* const got = std::realloc(memory, newSize);
    if (!got)
        throw std::bad_alloc();
    return got;
}

void Memory::Free(void* memory)
{
    std::free(memory);
}

Error::Error(const QStringList& messages, const QVector<Mistyped>& mistyped)
    : m_messages(messages), m_mistyped(mistyped), m_what(messages.join(QLatin1Char('\n')).toUtf8())
{}

Document parse(const QString& text)
{
    return guarded([&] { return parsed(text); });
}

QString toText(const Value& value)
{
    using Buffer = rapidjson::GenericStringBuffer<Encoding, Memory>;
    return guarded([&] {
        Buffer buffer;
        rapidjson::Writer<Buffer, Encoding, Encoding, Memory> writer(buffer);
        value.Accept(writer);
        const auto length = buffer.GetSize() / sizeof(Char);
        return QString(reinterpret_cast<const QChar*>(buffer.GetString()),
                       static_cast<int>(length));
    });
}

Value toJson(const QString& text, Allocator& allocator)
{
    return Value(reinterpret_cast<const Char*>(text.utf16()), static_cast<Size>(text.size()),
                 allocator);
}

Value copyOf(const Value& value, Allocator& allocator)
{
    Value copy(value.GetType());
    if (value.IsObject()) {
        for (const auto& member : value.GetObject())
            copy.AddMember(copyOf(member.name, allocator), copyOf(member.value, allocator),
                           allocator);
    } else if (value.IsArray()) {
        for (const Value& element : value.GetArray())
            copy.PushBack(copyOf(element, allocator), allocator);
    } else if (value.IsString()) {
        copy.SetString(value.GetString(), value.GetStringLength(), allocator);
    } else if (value.IsUint64()) {
        copy.SetUint64(value.GetUint64());
    } else if (value.IsInt64()) {
        copy.SetInt64(value.GetInt64());
    } else if (value.IsNumber()) {
        copy.SetDouble(value.GetDouble());
    }
    return copy;
}

QString toQString(const Value& string)
{
    return QString(reinterpret_cast<const QChar*>(string.GetString()),
                   static_cast<int>(string.GetStringLength()));
}

}  // namespace velm::detail::json
