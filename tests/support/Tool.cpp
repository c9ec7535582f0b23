#include "support/Tool.h"

#include "support/Values.h"

#include <QCoreApplication>
#include <QProcess>

QString program()
{
    return QCoreApplication::applicationDirPath() + u"/velm"_s;
}

Answer velm(const QStringList& arguments)
{
    QProcess process;
    process.start(program(), arguments);
    Answer answer;
    if (!process.waitForFinished(60000))
        return answer;
    answer.exitCode = process.exitCode();
    const QByteArray output = process.readAllStandardOutput();
    answer.json = QJsonDocument::fromJson(output);
    answer.output = QString::fromUtf8(output).remove(QLatin1Char('\r'));
    answer.talk = QString::fromUtf8(process.readAllStandardError());
    return answer;
}
