#include "SmartTable.h"

namespace SmartTable {

const char* version()
{
    return VELM_VERSION;
}

}  // namespace SmartTable
