#pragma once

#include "smarttable/package/SmallXml.h"

#include <cstddef>
#include <string>

namespace SmartTable::detail {

// Elements of small trees, known by their names without prefixes. What makes one throws
// std::bad_alloc.

/// The prefix of an element's name, ":" included; mostly there is none.
std::string prefixOf(pugi::xml_node element);

/// The first child of that name; a null node if there is none.
pugi::xml_node childNamed(pugi::xml_node parent, const char* name);

/// Appends a child, whose name gets the prefix of its parent.
pugi::xml_node appendChild(pugi::xml_node parent, const char* name);

/// The child of that name. If there is none, it is made before the first that comes behind it in
/// the order that a standard wants; a choice between contents (ECMA-376-3, 10.2.1) stands where its
/// first content would.
pugi::xml_node elementInOrder(pugi::xml_node parent, const char* name, const char* const* order,
                              size_t count);

}  // namespace SmartTable::detail
