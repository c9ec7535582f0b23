#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

struct ChildAnswer
{
    int exitCode = -1;
    QString output;  // UTF-8, without the last line end
};

/// Runs a program of the build, or a copy of one elsewhere, which then finds Qt all the same.
class ChildProgram
{
public:
    explicit ChildProgram(const QString& path);

    void setVariable(const QString& name, const QString& value);

    /// Runs the program to its end, four minutes at most.
    ChildAnswer run(const QStringList& arguments);

    /// Runs the program until it has printed a number of lines, and kills it.
    void killAfterLines(const QStringList& arguments, int lines);

private:
    QString m_path;
    QProcess m_process;
};

/// The path of a file that the build made: a program, or what lies beside the library.
QString builtFile(const QString& name);

#ifdef Q_OS_WIN
const QString kHostName = QStringLiteral("velm_test_host.exe");
const QString kLibraryName = QStringLiteral("VelmCommon.dll");
#else
const QString kHostName = QStringLiteral("velm_test_host");
const QString kLibraryName = QStringLiteral("libVelmCommon.so.0");
#endif
