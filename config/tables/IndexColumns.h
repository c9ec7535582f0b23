#pragma once

#include "config/tables/RecordColumns.h"
#include "CVelmIndex.h"

namespace velm::detail {

/// The table "indexini".
inline constexpr Columns<VelmIndexItem, 6> kIndexColumns{{{"code", &VelmIndexItem::code},
                                                          {"name", &VelmIndexItem::name},
                                                          {"ltype", &VelmIndexItem::ltype},
                                                          {"width", &VelmIndexItem::width},
                                                          {"table", &VelmIndexItem::table},
                                                          {"usecode", &VelmIndexItem::usecode}}};

}  // namespace velm::detail
