#include "smarttable/xml/Elements.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace SmartTable::detail {

namespace {

bool isNamed(pugi::xml_node element, const char* name)
{
    return std::strcmp(localName(element), name) == 0;
}

pugi::xml_node made(pugi::xml_node element)
{
    if (!element)
        throw std::bad_alloc();
    return element;
}

}  // namespace

std::string prefixOf(pugi::xml_node element)
{
    const char* const name = element.name();
    return std::string(name, static_cast<size_t>(localName(element) - name));
}

pugi::xml_node childNamed(pugi::xml_node parent, const char* name)
{
    for (pugi::xml_node child : parent.children()) {
        if (isNamed(child, name))
            return child;
    }
    return pugi::xml_node();
}

pugi::xml_node appendChild(pugi::xml_node parent, const char* name)
{
    return made(parent.append_child((prefixOf(parent) + name).c_str()));
}

pugi::xml_node elementInOrder(pugi::xml_node parent, const char* name, const char* const* order,
                              size_t count)
{
    const auto orderOf = [order, count](const char* known) {
        const auto* const found = std::find_if(order, order + count, [known](const char* other) {
            return std::strcmp(known, other) == 0;
        });
        return found == order + count ? -1 : static_cast<int>(found - order);
    };
    pugi::xml_node behind;
    for (pugi::xml_node child : parent.children()) {
        if (isNamed(child, name))
            return child;
        const pugi::xml_node told =
            isNamed(child, "AlternateContent") ? child.first_child().first_child() : child;
        if (!behind && orderOf(localName(told)) > orderOf(name))
            behind = child;
    }
    if (!behind)
        return appendChild(parent, name);
    return made(parent.insert_child_before((prefixOf(parent) + name).c_str(), behind));
}

}  // namespace SmartTable::detail
