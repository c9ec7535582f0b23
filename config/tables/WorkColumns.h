#pragma once

#include "config/tables/RecordColumns.h"
#include "CVelmWork.h"

namespace velm::detail {

/// The table "workdef".
inline constexpr Columns<VelmWorkItem, 7> kWorkColumns{{{"code", &VelmWorkItem::code},
                                                        {"layer", &VelmWorkItem::layer},
                                                        {"enttype", &VelmWorkItem::enttype},
                                                        {"par1", &VelmWorkItem::par1},
                                                        {"par2", &VelmWorkItem::par2},
                                                        {"text", &VelmWorkItem::text},
                                                        {"color", &VelmWorkItem::color, true}}};

}  // namespace velm::detail
