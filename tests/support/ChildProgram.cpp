#include "support/ChildProgram.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#ifdef Q_OS_WIN
constexpr QChar kListSeparator = QLatin1Char(';');
#else
constexpr QChar kListSeparator = QLatin1Char(':');
#endif

ChildProgram::ChildProgram(const QString& path) : m_path(path)
{
    const QString folder = QFileInfo(path).absolutePath();
    const QString programs = QDir::toNativeSeparators(QCoreApplication::applicationDirPath());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString path0 = environment.value(QStringLiteral("PATH"));
    environment.insert(QStringLiteral("PATH"), programs + kListSeparator + path0);
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"),
                       QCoreApplication::libraryPaths().join(kListSeparator));
    environment.insert(QStringLiteral("LD_LIBRARY_PATH"), folder);
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    m_process.setProcessEnvironment(environment);
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
    return programs.exists(name)
               ? programs.filePath(name)
               : QDir::cleanPath(programs.filePath(QStringLiteral("../lib/") + name));
}

#ifdef Q_OS_WIN
QString hostName()
{
    return QStringLiteral("velm_test_host.exe");
}
QString libraryName()
{
    return QStringLiteral("VelmCommon.dll");
}
#else
QString hostName()
{
    return QStringLiteral("velm_test_host");
}
QString libraryName()
{
    return QStringLiteral("libVelmCommon.so.0");
}
#endif
