#pragma once

#include <QFile>

namespace velm::detail {

/// A file whose errorString() is short and English on every system (platform::errorText()), where
/// that of QFile comes in the language that Qt speaks and knows few causes. It keeps no bytes back:
/// what is written is with the system. An object belongs to one thread.
class SystemFile : public QFile
{
public:
    SystemFile() = default;
    explicit SystemFile(const QString& path);

    /// Also of an open file, of which QFile knows the descriptor only.
    QString fileName() const override;

    using QFile::open;
    /// Opens for ReadOnly, for WriteOnly, which changes nothing yet and takes no new file, or a new
    /// file for ReadWrite | NewOnly.
    bool open(OpenMode mode) override;

    /// The error that errorString() tells, as platform::lastError(); 0 if there was none.
    int systemError() const { return m_error; }

protected:
    qint64 readData(char* bytes, qint64 size) override;
    qint64 writeData(const char* bytes, qint64 size) override;

private:
    void keepError();

    QString m_path;  // of the file that was opened
    int m_error = 0;
};

}  // namespace velm::detail
