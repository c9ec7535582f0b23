#pragma once

#include "CVelmSystemGlobal.h"

#include <QMutex>
#include <QMutexLocker>
#include <QStringList>

#include <utility>

/// Keeps the lines of the log while it lives. There is one at a time.
class LogLines
{
public:
    LogLines() { CVelmSystemGlobal::Instance()->installMessageHandler(keep); }
    ~LogLines()
    {
        CVelmSystemGlobal::Instance()->installMessageHandler(nullptr);
        take();
    }
    Q_DISABLE_COPY(LogLines)

    /// The lines since the last call.
    static QStringList take()
    {
        const QMutexLocker lock(&s_mutex);
        return std::exchange(s_lines, {});
    }

private:
    static void keep(const QString& line)
    {
        const QMutexLocker lock(&s_mutex);
        s_lines.append(line);
    }

    inline static QMutex s_mutex;
    inline static QStringList s_lines;
};
