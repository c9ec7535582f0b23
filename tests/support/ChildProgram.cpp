#include "support/ChildProgram.h"

#include "support/Values.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

ChildProgram::ChildProgram(const QString& path) : m_path(path)
{
    const QString programs = QDir::toNativeSeparators(QCoreApplication::applicationDirPath());
    m_process.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
    setVariable(u"PATH"_s, programs + QDir::listSeparator() + qEnvironmentVariable("PATH"));
    setVariable(u"QT_PLUGIN_PATH"_s, QCoreApplication::libraryPaths().join(QDir::listSeparator()));
    setVariable(u"LD_LIBRARY_PATH"_s, QFileInfo(path).absolutePath());
    setVariable(u"LC_ALL"_s, u"C.UTF-8"_s);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

void ChildProgram::setVariable(const QString& name, const QString& value)
{
    QProcessEnvironment environment = m_process.processEnvironment();
    environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
}

ChildAnswer ChildProgram::run(const QStringList& arguments)
{
    m_process.start(m_path, arguments);
    ChildAnswer answer;
    if (!m_process.waitForFinished(240000)) {
        ADD_FAILURE() << m_path.toStdString() << ": " << m_process.errorString().toStdString();
        m_process.kill();
        m_process.waitForFinished();
        return answer;
    }
    answer.exitCode = m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    answer.output = QString::fromUtf8(m_process.readAllStandardOutput());
    answer.output.remove(QLatin1Char('\r'));
    if (answer.output.endsWith(QLatin1Char('\n')))
        answer.output.chop(1);
    return answer;
}

void ChildProgram::killAfterLines(const QStringList& arguments, int lines)
{
    m_process.start(m_path, arguments);
    for (int seen = 0; seen < lines;) {
        ASSERT_TRUE(m_process.waitForReadyRead(60000));
        while (m_process.canReadLine()) {
            m_process.readLine();
            ++seen;
        }
    }
    m_process.kill();
    ASSERT_TRUE(m_process.waitForFinished(240000));
}

QString builtFile(const QString& name)
{
    const QDir programs(QCoreApplication::applicationDirPath());
    const QString inLib = QDir::cleanPath(programs.filePath(u"../lib/"_s + name));
    return programs.exists(name) ? programs.filePath(name) : inLib;
}
