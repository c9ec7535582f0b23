#include "common/json/JsonMerge.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace velm::detail::json {

namespace {

using Size = rapidjson::SizeType;

constexpr std::uint64_t kMostComparisons = 1000 * 1000;  // longer arrays are paired by place only

/// Whether @p whole has every member of @p part with the same value, objects within alike.
bool contains(const Value& whole, const Value& part)
{
    if (!whole.IsObject() || !part.IsObject())
        return whole == part;
    for (const auto& member : part.GetObject()) {
        const auto found = whole.FindMember(member.name);
        if (found == whole.MemberEnd() || !contains(found->value, member.value))
            return false;
    }
    return true;
}

/// For each element of @p source its counterpart in @p target, or target.Size().
std::vector<Size> counterparts(const Value& target, const Value& source)
{
    const Size none = target.Size();
    std::vector<Size> found(source.Size(), none);
    std::vector<bool> taken(none, false);
    const bool searchable = std::uint64_t{source.Size()} * none <= kMostComparisons;
    for (Size i = 0; searchable && i < source.Size(); ++i) {
        Size j = 0;
        while (j < none && (taken[j] || !contains(target[j], source[i])))
            ++j;
        found[i] = j;
        if (j < none)
            taken[j] = true;
    }
    for (Size i = 0; i < source.Size() && i < none; ++i) {
        if (found[i] == none && !taken[i])
            found[i] = i;
    }
    return found;
}

void overlayValue(Value& target, const Value& source, Allocator& allocator);

Value overlaidArray(const Value& target, const Value& source, Allocator& allocator)
{
    const std::vector<Size> from = counterparts(target, source);
    Value array(rapidjson::kArrayType);
    for (Size i = 0; i < source.Size(); ++i) {
        Value element;
        if (from[i] < target.Size())
            element = copyOf(target[from[i]], allocator);
        overlayValue(element, source[i], allocator);
        array.PushBack(element, allocator);
    }
    return array;
}

/// The members of @p changed that @p before has not, or has otherwise.
Value changesOf(const Value& changed, const Value& before, Allocator& allocator)
{
    Value result(rapidjson::kObjectType);
    for (const auto& member : changed.GetObject()) {
        const auto found = before.FindMember(member.name);
        Value value;
        if (found != before.MemberEnd() && found->value.IsObject() && member.value.IsObject()) {
            value = changesOf(member.value, found->value, allocator);
            if (value.ObjectEmpty())
                continue;
        } else if (found != before.MemberEnd() && found->value == member.value) {
            continue;
        } else {
            value = copyOf(member.value, allocator);
        }
        result.AddMember(copyOf(member.name, allocator), value, allocator);
    }
    return result;
}

std::u16string nameOf(const Value& name)
{
    return {name.GetString(), name.GetStringLength()};
}

void overlayObject(Value& target, const Value& source, Allocator& allocator)
{
    // Objects of RapidJSON are searched from the first member to the last.
    std::unordered_map<std::u16string, Size> places;
    for (auto member = target.MemberBegin(); member != target.MemberEnd(); ++member)
        places.emplace(nameOf(member->name), static_cast<Size>(member - target.MemberBegin()));
    for (const auto& member : source.GetObject()) {
        const auto added = places.emplace(nameOf(member.name), target.MemberCount());
        if (added.second)
            target.AddMember(copyOf(member.name, allocator), copyOf(member.value, allocator),
                             allocator);
        else
            overlayValue((target.MemberBegin() + added.first->second)->value, member.value,
                         allocator);
    }
}

void overlayValue(Value& target, const Value& source, Allocator& allocator)
{
    if (target.IsObject() && source.IsObject())
        overlayObject(target, source, allocator);
    else if (target.IsArray() && source.IsArray())
        target = overlaidArray(target, source, allocator);
    else
        target = copyOf(source, allocator);
}

void completeObject(Value& target, const Value& whole, Allocator& allocator)
{
    for (const auto& member : whole.GetObject()) {
        const auto found = target.FindMember(member.name);
        if (found == target.MemberEnd())
            target.AddMember(copyOf(member.name, allocator), copyOf(member.value, allocator),
                             allocator);
        else if (member.value.IsObject() && found->value.IsObject())
            completeObject(found->value, member.value, allocator);
        else if (member.value.IsObject())
            found->value = copyOf(member.value, allocator);
    }
}

}  // namespace

Value difference(const Value& changed, const Value& before, Allocator& allocator)
{
    return guarded([&] { return changesOf(changed, before, allocator); });
}

void overlay(Value& target, const Value& source, Allocator& allocator)
{
    guarded([&] { overlayObject(target, source, allocator); });
}

void complete(Value& target, const Value& whole, Allocator& allocator)
{
    guarded([&] { completeObject(target, whole, allocator); });
}

}  // namespace velm::detail::json
