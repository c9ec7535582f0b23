#pragma once

class CVelmWork;

namespace velm::detail {

/// The work definitions of the database, whatever the version of the configuration. The getters of
/// CVelmConfigManager tell them by their constness, which a caller would have to get right. Owned
/// by the manager until its next flushVelmConfig().
const CVelmWork& databaseWork();

}  // namespace velm::detail
