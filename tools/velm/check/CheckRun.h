#pragma once

#include "check/Problems.h"

#include <QStringList>

#include <optional>

class Arguments;

/// What a run of the check is asked for.
class CheckRun
{
public:
    explicit CheckRun(const Arguments& args) : m_args(args) {}

    /// The rules to look for. @return the first name that is no rule; empty if all are
    QString selectRules();

    /// Checks once and tells what was found. @return the exit code
    int run();

private:
    int checkAndTell() const;
    /// What the rules find; nothing if a database cannot be read, which is told.
    std::optional<QVector<Problem>> find() const;
    /// The same after mending. @p exitCode is set if something could not be mended.
    std::optional<QVector<Problem>> mendAndFind(int& exitCode) const;
    bool writeBaseline(const QVector<Problem>& problems) const;
    bool applyBaseline(QVector<Problem>& problems, QStringList& notes) const;
    void tell(const QVector<Problem>& problems, const QStringList& notes) const;
    bool isFound(const QVector<Problem>& problems) const;

    const Arguments& m_args;
    QVector<const Rule*> m_rules;
};
