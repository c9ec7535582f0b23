#pragma once

#include <QEventLoop>
#include <QTimer>

/// Runs the event loop for @p ms milliseconds, behind every timer that is due before.
inline void letPass(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}
