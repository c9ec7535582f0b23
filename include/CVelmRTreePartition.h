#pragma once

#include "CVelmRTreeNode.h"
#include "VelmCommonGlobal.h"

/// The working record of a split: which of the candidate branches go into which of two groups.
class VELMCOMMON_EXPORT CVelmRTreePartition
{
public:
    /// A full node and one more.
    static constexpr int kMaxCandidates = CVelmRTreeNode::kMaxBranches + 1;

    /// Sets counts, areas, groups and what is taken to 0.
    void Init();

    int partition[kMaxCandidates] = {};  ///< the group of each candidate, -1 as long as it has none
    bool taken[kMaxCandidates] = {};     ///< whether each candidate has a group
    int total = 0;                       ///< candidates
    int minFill = 0;                     ///< entries that each group gets at least
    int count[2] = {};                   ///< entries in each group
    CVelmRTreeMBR cover[2];              ///< rectangle around each group
    double area[2] = {};                 ///< size of each cover
};
