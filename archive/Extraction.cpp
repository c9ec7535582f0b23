#include "archive/Extraction.h"

#include "archive/EntryName.h"
#include "common/platform/FolderHandle.h"
#include "common/platform/SystemError.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <new>

namespace velm::detail {

namespace {

/// Whether an entry is one that was asked for, or lies in a folder that was.
bool isNamed(const QString& entry, const QString& name)
{
    if (!entry.startsWith(name))
        return false;
    return entry.size() == name.size() || name.endsWith(QLatin1Char('/'))
           || entry.at(name.size()) == QLatin1Char('/');
}

}  // namespace

Extraction::Extraction(ZipReader& archive, const CompressSettings& settings, const QString& folder)
    : m_archive(archive), m_settings(settings), m_limits(settings),
      m_folder(QDir::cleanPath(QFileInfo(folder).absoluteFilePath())),
      m_names(m_folder, settings.overwrites)
{}

Extraction::~Extraction()
{
    try {
        m_content.close();  // on Windows, what is held is not removed
        m_staging.reset();
        m_target.close();
        for (int i = m_madeFolders.size() - 1; !m_isDone && i >= 0; --i)
            QDir().rmdir(m_madeFolders.at(i));
    } catch (const std::bad_alloc&) {  // an empty folder stays
        return;
    }
}

QString Extraction::choose(const QVector<ZipEntry>& entries, const QStringList& names)
{
    QVector<bool> found(names.size(), false);
    for (const ZipEntry& entry : entries) {
        bool isWanted = names.isEmpty();
        for (int i = 0; i < names.size(); ++i) {
            if (isNamed(entry.name, names.at(i)))
                isWanted = found[i] = true;
        }
        QString problem = isWanted ? admit(entry) : QString();
        if (!problem.isEmpty())
            return aboutEntry(entry.name, problem);
    }
    const int missing = found.indexOf(false);
    return missing < 0 ? QString()
                       : aboutEntry(names.at(missing), QStringLiteral("there is no such entry"));
}

QString Extraction::admit(const ZipEntry& entry)
{
    if (entry.isLink)
        return QStringLiteral("it is a link, which is not extracted");
    if (entry.isEncrypted)
        return QStringLiteral("it is encrypted, which is not read");
    QString problem = entryNameProblem(entry.name);
    if (!problem.isEmpty())
        return QStringLiteral("its name ") + problem;
    problem = m_limits.admit(entry);
    if (problem.isEmpty())
        problem = m_names.add(entry.name);
    m_chosen.append(entry);
    return problem;
}

QString Extraction::extract()
{
    QString problem = makeFolder();
    if (problem.isEmpty())
        problem = makeStaging();
    for (const ZipEntry& entry : qAsConst(m_chosen)) {
        if (!problem.isEmpty())
            return problem;
        problem = make(entry);
        if (!problem.isEmpty())
            problem = aboutEntry(entry.name, problem);
    }
    if (problem.isEmpty())
        problem = m_content.moveInto(m_target, m_settings.overwrites);
    m_isDone = problem.isEmpty();
    return problem;
}

/// Makes the folder to extract into, if it is not there, and holds it.
QString Extraction::makeFolder()
{
    QStringList missing;
    for (QString folder = m_folder; !QFileInfo::exists(folder);) {
        missing.prepend(folder);
        const QString parent = QFileInfo(folder).path();
        if (parent == folder)
            return aboutEntry(m_folder, QStringLiteral("there is no such drive or folder"));
        folder = parent;
    }
    for (const QString& path : qAsConst(missing)) {
        const int error = platform::makeFolder(path);
        if (error != 0 && !QFileInfo(path).isDir())
            return aboutEntry(path, QStringLiteral("the folder cannot be made: ")
                                        + platform::errorText(error));
        if (error == 0)
            m_madeFolders.append(path);
    }
    const int error = m_target.open(m_folder);
    if (platform::isNoFolder(error))
        return aboutEntry(m_folder, QStringLiteral("is no folder"));
    return error == 0 ? QString() : aboutEntry(m_folder, platform::errorText(error));
}

/// Makes the folder within it for what is not finished.
QString Extraction::makeStaging()
{
    StagingFolder::removeLeftOver(m_folder);
    m_staging = std::make_unique<StagingFolder>();
    if (!m_staging->make(m_folder))
        return aboutEntry(m_folder, QStringLiteral("no file can be made there: ")
                                        + platform::errorText(m_staging->error()));
    const QString content = m_staging->path(QStringLiteral("content"));
    const int error = platform::makeFolder(content);
    if (error != 0)
        return aboutEntry(m_folder, QStringLiteral("no folder can be made there: ")
                                        + platform::errorText(error));
    return m_content.open(content);
}

QString Extraction::make(const ZipEntry& entry)
{
    QString problem = m_limits.take(entry, 0);  // asks whether to go on
    if (!problem.isEmpty())
        return problem;
    return entry.isFolder ? m_content.addFolder(entry.name, entry.modified) : makeFile(entry);
}

QString Extraction::makeFile(const ZipEntry& entry)
{
    const auto unwritten = [](int error) {
        return error == 0 ? QString()
                          : QStringLiteral("it cannot be written: ") + platform::errorText(error);
    };
    platform::NewFile file;
    QString problem = m_content.addFile(entry.name, file);
    if (!problem.isEmpty())
        return problem;
    problem = m_archive.read(entry, [&](const char* bytes, int size) {
        QString refused = m_limits.take(entry, size);
        return refused.isEmpty() ? unwritten(file.write(bytes, size)) : refused;
    });
    if (problem.isEmpty() && entry.modified.isValid())
        file.setTime(entry.modified);
    const int error = file.close();
    return problem.isEmpty() ? unwritten(error) : problem;
}

}  // namespace velm::detail
