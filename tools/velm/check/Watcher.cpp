#include "check/Watcher.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>

namespace {

constexpr int kQuietMs = 300;  // a program that saves writes more than once

/// What tells one content of a file from another. A log of SQLite's without entries is none: who
/// only reads makes one, and takes it away.
QString stateOf(const QFileInfo& file)
{
    const bool isLog = file.fileName().endsWith(QLatin1String("-wal"));
    if (!file.exists() || (isLog && file.size() == 0))
        return QString();
    return QStringLiteral("%1 %2").arg(file.size()).arg(file.lastModified().toMSecsSinceEpoch());
}

}  // namespace

Watcher::Watcher(const QString& folder, const QStringList& files,
                 const std::function<void()>& changed)
    : m_folder(folder), m_files(files), m_states(states()), m_changed(changed)
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(kQuietMs);
    QObject::connect(&m_system, &QFileSystemWatcher::directoryChanged, [this] { m_quiet.start(); });
    QObject::connect(&m_system, &QFileSystemWatcher::fileChanged, [this] { m_quiet.start(); });
    QObject::connect(&m_quiet, &QTimer::timeout, [this] { notice(); });
}

int Watcher::run()
{
    notice();
    return QCoreApplication::exec();
}

QStringList Watcher::states() const
{
    QStringList states;
    for (const QString& name : m_files)
        states.append(stateOf(QFileInfo(m_folder + QLatin1Char('/') + name)));
    return states;
}

void Watcher::notice()
{
    // A file that was replaced is watched no longer.
    m_system.addPath(m_folder);
    for (const QString& name : qAsConst(m_files)) {
        const QString path = m_folder + QLatin1Char('/') + name;
        if (QFileInfo::exists(path))
            m_system.addPath(path);
    }
    const QStringList now = states();
    if (now == m_states)
        return;
    m_states = now;
    m_changed();
}
