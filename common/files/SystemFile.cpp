#include "common/files/SystemFile.h"

#include "common/platform/FileCalls.h"
#include "common/platform/SystemError.h"

namespace velm::detail {

namespace {

platform::OpenFor purposeOf(QIODevice::OpenMode mode)
{
    if (mode.testFlag(QIODevice::NewOnly))
        return platform::OpenFor::Making;
    return mode.testFlag(QIODevice::WriteOnly) ? platform::OpenFor::Writing
                                               : platform::OpenFor::Reading;
}

}  // namespace

SystemFile::SystemFile(const QString& path) : QFile(path) {}

QString SystemFile::fileName() const
{
    const QString given = QFile::fileName();
    return given.isEmpty() ? m_path : given;
}

bool SystemFile::open(OpenMode mode)
{
    m_path = fileName();
    const int file = platform::openFile(m_path, purposeOf(mode));
    if (file == platform::kNoFile) {
        keepError();
        return false;
    }
    return open(file, (mode & ~NewOnly) | Unbuffered, AutoCloseHandle);
}

qint64 SystemFile::readData(char* bytes, qint64 size)
{
    const qint64 got = platform::readFile(handle(), bytes, size);
    if (got < 0)
        keepError();
    return got;
}

qint64 SystemFile::writeData(const char* bytes, qint64 size)
{
    if (platform::writeFile(handle(), bytes, size))
        return size;
    keepError();
    return -1;
}

void SystemFile::keepError()
{
    m_error = platform::lastError();
    setErrorString(platform::errorText(m_error));
}

}  // namespace velm::detail
