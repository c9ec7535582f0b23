#pragma once

#include <QElapsedTimer>
#include <QString>

/// How far a long operation is, in one line of the terminal that standard error is; nothing where
/// it is none. It appears after half a second and is gone with the object.
class ProgressBar
{
public:
    ProgressBar();
    ~ProgressBar();
    Q_DISABLE_COPY(ProgressBar)

    /// Shows @p done of @p total bytes and what is worked at.
    void show(const QString& what, qint64 done, qint64 total);

private:
    void clear();

    int m_width;            // of the terminal; 0 if there is none
    int m_shown = 0;        // columns
    QElapsedTimer m_timer;  // since the line was drawn
    qint64 m_pauseMs;
};
