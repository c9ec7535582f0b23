#pragma once

namespace velm::detail {

/// How long a statement, a change or a whole load waits for the locks of other programs.
constexpr int kLockPatienceMs = 5000;
/// The same where a person waits for an answer that others need not give: to replace a database.
constexpr int kReplacePatienceMs = 2000;

}  // namespace velm::detail
