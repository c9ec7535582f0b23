#pragma once

namespace velm::detail {

// The files of the configuration databases.
inline constexpr char kSystemDatabaseName[] = "peltaconfig.db";
inline constexpr char kPipeDatabaseName[] = "PipeConfig.db";

}  // namespace velm::detail
