#pragma once

#include <QString>

struct VelmProcessParam;

namespace velm::detail {

/// Starts a program and lets it go. @return its process identifier; 0 if it cannot start
unsigned long startProcess(const QString& program, const VelmProcessParam& param);

/// Starts a program and waits for its end as @p param tells; after the wait it goes on by itself.
unsigned long runProcess(const QString& program, const VelmProcessParam& param);

}  // namespace velm::detail
