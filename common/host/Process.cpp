#include "common/host/Process.h"

#include "VelmProcessParam.h"

#include <QProcess>

#include <memory>

namespace velm::detail {

unsigned long startProcess(const QString& program, const VelmProcessParam& param)
{
    qint64 id = 0;
    const bool started =
        QProcess::startDetached(program, param.m_arguments, param.m_workingFolder, &id);
    return started ? static_cast<unsigned long>(id) : 0;
}

unsigned long runProcess(const QString& program, const VelmProcessParam& param)
{
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->setInputChannelMode(QProcess::ForwardedInputChannel);
    process->setWorkingDirectory(param.m_workingFolder);
    process->start(program, param.m_arguments);
    if (!process->waitForStarted())
        return 0;
    const auto id = static_cast<unsigned long>(process->processId());
    if (!process->waitForFinished(param.m_waitMs) && process->state() != QProcess::NotRunning) {
        // Its destructor would end the program, so the object waits for that in the event loop.
        QProcess* running = process.release();
        QObject::connect(running, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished),
                         running, &QObject::deleteLater);
    } else if (param.m_exitCode) {
        *param.m_exitCode =
            process->exitStatus() == QProcess::NormalExit ? process->exitCode() : -1;
    }
    return id;
}

}  // namespace velm::detail
