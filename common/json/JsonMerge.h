#pragma once

#include "common/json/Json.h"

/// Changes of JSON documents, so that a document can be saved without losing what its writer does
/// not know. All throw OutOfMemory, which leaves @p target half changed.
namespace velm::detail::json {

/// The members of @p changed that @p before has not or has with another value, in the same nesting.
/// Arrays count as a whole. An empty object if nothing differs.
Value difference(const Value& changed, const Value& before, Allocator& allocator);

/// Puts the members of the object @p source into the object @p target, object by object; what @p
/// target has beside them stays. An array replaces the array of its name, but each element that is
/// an object keeps the members that only its counterpart in @p target has: an element that holds
/// all its members unchanged, else the one at its place.
void overlay(Value& target, const Value& source, Allocator& allocator);

/// Adds to the object @p target what only the object @p whole has, in the same nesting. A value
/// that stands where an object is due is replaced by it.
void complete(Value& target, const Value& whole, Allocator& allocator);

}  // namespace velm::detail::json
