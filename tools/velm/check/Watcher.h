#pragma once

#include <QFileSystemWatcher>
#include <QStringList>
#include <QTimer>

#include <functional>

/// Calls when files of a folder have changed, and things have been quiet for a moment.
class Watcher
{
public:
    /// @p files are names in @p folder. Those that are not there yet count too.
    Watcher(const QString& folder, const QStringList& files, const std::function<void()>& changed);

    /// Waits for changes until the program is ended.
    int run();

private:
    QStringList states() const;
    void notice();

    QString m_folder;
    QStringList m_files;
    QStringList m_states;  // of the files, when they were last looked at
    std::function<void()> m_changed;
    QFileSystemWatcher m_system;
    QTimer m_quiet;
};
