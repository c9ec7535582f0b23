#pragma once

#include "common/json/Json.h"

#include <QMap>
#include <QVector>

#include <bitset>
#include <cmath>
#include <tuple>
#include <type_traits>
#include <utility>

/// Binds the members of a record to the keys of a JSON object. A record says once which key each
/// member has, a line a member; reading, writing and the paths in error messages follow from it:
///
///     VELM_JSON_RECORD(VelmFrameSize,
///         VELM_JSON(m_frameWidth, "FrameWidth"),
///         VELM_JSON(m_frameHeight, "FrameHeight"))
///
/// Members may be bool, int, enumerations, double, QString, bound records, and lists of these; to
/// be read only, also maps of them by key and bound records in part (Partial). A key that is
/// missing or has a value of the wrong type leaves its member as it was.
namespace velm::detail::json {

/// One bound member.
template<class Record, class Type>
struct Member
{
    const char* name;  // in error paths
    const char16_t* key;
    Type Record::*pointer;
    bool mandatory;
    bool keepsPlaces;  // a list in which an element that fails is an empty one
};

template<class Record, class Type>
Member<Record, Type> member(const char* name, const char16_t* key, Type Record::*pointer,
                            bool mandatory, bool keepsPlaces = false)
{
    return {name, key, pointer, mandatory, keepsPlaces};
}

/// Specialised by VELM_JSON_RECORD.
template<class Record>
struct Binding;

/// To be used at file scope outside any namespace.
#define VELM_JSON_RECORD(Type, ...)                               \
    template<>                                                    \
    struct velm::detail::json::Binding<Type>                      \
    {                                                             \
        using Record = Type;                                      \
        static const auto& members()                              \
        {                                                         \
            static const auto all = std::make_tuple(__VA_ARGS__); \
            return all;                                           \
        }                                                         \
    };

/// An optional member.
#define VELM_JSON(name, key) velm::detail::json::member(#name, u##key, &Record::name, false)
/// A list whose elements count by their places: one that fails is 0 or empty.
#define VELM_JSON_PLACES(name, key) \
    velm::detail::json::member(#name, u##key, &Record::name, false, true)
/// A member whose key must be there.
#define VELM_JSON_MANDATORY(name, key) \
    velm::detail::json::member(#name, u##key, &Record::name, true)

/// Calls @p visit with each bound member of a record, and its place among them.
template<class Record, class Visit>
void forEachMember(const Visit& visit)
{
    size_t place = 0;
    std::apply([&](const auto&... member) { (visit(member, place++), ...); },
               Binding<Record>::members());
}

/// Some members of a bound record: those that an object tells. The others are as in a new record.
template<class Record>
class Partial
{
public:
    const Record& values() const { return m_values; }

    /// Puts what is told in place of what @p record holds.
    void applyTo(Record& record) const
    {
        forEachMember<Record>([&](const auto& member, size_t place) {
            if (m_told[place])
                record.*member.pointer = m_values.*member.pointer;
        });
    }

private:
    friend class Reader;

    using Members = std::decay_t<decltype(Binding<Record>::members())>;

    Record m_values;
    std::bitset<std::tuple_size_v<Members>> m_told;  // by place
};

/// A key of an object that no member is bound to.
struct UnknownKey
{
    QString key;
    QStringList known;  // those of the object's record
    QString path;       // of keys, this one too
};

/// Reads values into members and collects what fails, each with the path of its member.
class Reader
{
public:
    /// Keys that are not known are added to @p unknown, unless it is null.
    explicit Reader(QVector<UnknownKey>* unknown = nullptr) : m_unknown(unknown) {}

    const QStringList& problems() const { return m_problems; }
    /// The members that they are about, but for those that are too many.
    const QVector<Mistyped>& mistyped() const { return m_mistyped; }

    // Each answers whether the value is of the right type, and writes to its output only then.
    bool read(const Value& json, bool& value);
    bool read(const Value& json, int& value);
    bool read(const Value& json, double& value);
    bool read(const Value& json, QString& value);

    template<class Enum>
    std::enable_if_t<std::is_enum_v<Enum>, bool> read(const Value& json, Enum& value)
    {
        int number = 0;
        if (!read(json, number))
            return false;
        value = static_cast<Enum>(number);
        return true;
    }

    /// The members that the object tells.
    template<class Record>
    bool read(const Value& json, Partial<Record>& partial)
    {
        if (!json.IsObject())
            return fail("not object", "an object");
        forEachMember<Record>([&](const auto& member, size_t place) {
            partial.m_told[place] = readMember(json, member, partial.m_values);
        });
        noteUnknownKeys<Record>(json);
        return true;
    }

    /// An object whose keys are not known. Values of the wrong type are left out.
    template<class Type>
    bool read(const Value& json, QMap<QString, Type>& map)
    {
        if (!json.IsObject())
            return fail("not object", "an object");
        map.clear();
        for (const auto& member : json.GetObject()) {
            const QString key = toQString(member.name);
            const Step step(*this, key, key);
            Type value{};
            if (read(member.value, value))
                map.insert(key, value);
        }
        return true;
    }

    /// QVector, QList or QStringList. Elements of the wrong type are left out, unless places count.
    template<class List>
    std::enable_if_t<!std::is_void_v<typename List::value_type>, bool> read(const Value& json,
                                                                            List& list)
    {
        if (!json.IsArray())
            return fail("not array", "a list");
        const bool keepsPlaces = std::exchange(m_keepsPlaces, false);  // not of lists within
        List elements;
        for (Size i = 0; i < json.Size(); ++i) {
            const QString place = QStringLiteral("[%1]").arg(i);
            const Step step(*this, place, place);
            typename List::value_type element{};
            if (read(json[i], element) || keepsPlaces)
                elements.append(element);
        }
        list = elements;
        return true;
    }

    /// A bound record. A member that fails does not stop the others, and the record counts as read.
    template<class Record, class = decltype(Binding<Record>::members())>
    bool read(const Value& json, Record& record)
    {
        if (!json.IsObject())
            return fail("not object", "an object");
        forEachMember<Record>(
            [&](const auto& member, size_t) { readMember(json, member, record); });
        noteUnknownKeys<Record>(json);
        return true;
    }

private:
    using Size = rapidjson::SizeType;

    /// A step down in the document, by member and by key, taken back at the end of its scope.
    class Step
    {
    public:
        Step(Reader& reader, const QString& name, const QString& key) : m_reader(reader)
        {
            reader.m_path.append(name);
            reader.m_keys.append(key);
        }
        ~Step()
        {
            m_reader.m_path.removeLast();
            m_reader.m_keys.removeLast();
        }
        Q_DISABLE_COPY(Step)

    private:
        Reader& m_reader;
    };

    /// @return whether the object tells it
    template<class Record, class Type>
    bool readMember(const Value& object, const Member<Record, Type>& member, Record& record)
    {
        const Step step(*this, QLatin1String(member.name), QString::fromUtf16(member.key));
        const auto found = object.FindMember(member.key);
        m_keepsPlaces = member.keepsPlaces;
        if (found != object.MemberEnd())
            return read(found->value, record.*member.pointer);
        if (member.mandatory)
            fail("mandatory key not found", "there");
        return false;
    }

    template<class Record>
    void noteUnknownKeys(const Value& object)
    {
        if (!m_unknown)
            return;
        QStringList known;
        forEachMember<Record>(
            [&known](const auto& member, size_t) { known.append(QString::fromUtf16(member.key)); });
        known.removeDuplicates();
        if (known.isEmpty())  // of a record without members anything may be meant
            return;
        for (const auto& entry : object.GetObject()) {
            const QString key = toQString(entry.name);
            if (!known.contains(key) && m_unknown->size() < kMostProblems)
                m_unknown->append({key, known, pathOf(key)});
        }
    }

    /// The path of a key of the object that is being read.
    QString pathOf(const QString& key) const;

    static constexpr int kMostProblems = 100;

    /// @p wanted is what there should be, in words.
    bool fail(const char* problem, const char* wanted);

    QStringList m_path;  // of members
    QStringList m_keys;
    QStringList m_problems;
    QVector<Mistyped> m_mistyped;
    bool m_keepsPlaces = false;  // of the list that is read next
    QVector<UnknownKey>* m_unknown;
};

/// Reads @p json into @p record. Everything that can be read is, before the failures of all members
/// are thrown as one Error. Throws OutOfMemory too, which leaves the rest unread. Keys that are not
/// known are added to @p unknown, unless it is null.
template<class Record>
void read(const Value& json, Record& record, QVector<UnknownKey>* unknown = nullptr)
{
    Reader reader(unknown);
    guarded([&] { return reader.read(json, record); });
    if (!reader.problems().isEmpty())
        throw Error(reader.problems(), reader.mistyped());
}

inline Value write(bool value, Allocator&)
{
    return Value(value);
}

inline Value write(int value, Allocator&)
{
    return Value(value);
}

/// JSON has no text for infinity and NaN: they become null, and a member that holds one is left
/// out.
inline Value write(double value, Allocator&)
{
    return std::isfinite(value) ? Value(value) : Value();
}

inline Value write(const QString& value, Allocator& allocator)
{
    return toJson(value, allocator);
}

template<class Enum>
std::enable_if_t<std::is_enum_v<Enum>, Value> write(Enum value, Allocator&)
{
    return Value(static_cast<int>(value));
}

template<class Record, class = decltype(Binding<Record>::members())>
Value write(const Record& record, Allocator& allocator);

template<class List>
std::enable_if_t<!std::is_void_v<typename List::value_type>, Value> write(const List& list,
                                                                          Allocator& allocator)
{
    Value array(rapidjson::kArrayType);
    for (const auto& element : list)
        array.PushBack(write(element, allocator), allocator);
    return array;
}

/// Of two members with one key the later one counts.
template<class Record, class>
Value write(const Record& record, Allocator& allocator)
{
    Value object(rapidjson::kObjectType);
    const auto writeMember = [&](const auto& member) {
        Value value = write(record.*member.pointer, allocator);
        if (value.IsNull())
            return;
        const auto found = object.FindMember(member.key);
        if (found == object.MemberEnd())
            object.AddMember(Value(member.key, allocator), value, allocator);
        else
            found->value = value;
    };
    forEachMember<Record>([&](const auto& member, size_t) { writeMember(member); });
    return object;
}

/// The document that holds @p record. Throws OutOfMemory.
template<class Record>
Document toDocument(const Record& record)
{
    return guarded([&] {
        Document document;
        static_cast<Value&>(document) = write(record, document.GetAllocator());
        return document;
    });
}

}  // namespace velm::detail::json
