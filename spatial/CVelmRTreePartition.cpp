#include "CVelmRTreePartition.h"

#include <algorithm>
#include <iterator>

void CVelmRTreePartition::Init()
{
    std::fill(std::begin(partition), std::end(partition), 0);
    std::fill(std::begin(taken), std::end(taken), false);
    std::fill(std::begin(count), std::end(count), 0);
    std::fill(std::begin(area), std::end(area), 0.0);
}
