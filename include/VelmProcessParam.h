#pragma once

#include <QString>
#include <QStringList>

/// How CVelmSystemGlobal::createProcess() starts a program.
struct VelmProcessParam
{
    QStringList m_arguments;    ///< each arrives as it is, blanks, quotes and all
    QString m_workingFolder;    ///< empty for the current one
    int m_waitMs = 0;           ///< how long to wait for its end, milliseconds; -1 until it comes
    int* m_exitCode = nullptr;  ///< gets the exit code if the program ended while waited for, -1 if
                                ///< it crashed; else it stays. The caller's.
};
