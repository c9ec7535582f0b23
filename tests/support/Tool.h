#pragma once

#include <QJsonDocument>
#include <QString>
#include <QStringList>

/// What the command-line tool answered.
struct Answer
{
    int exitCode = -1;
    QString output;
    QString talk;  // standard error
    QJsonDocument json;
};

/// The path of the tool, which lies beside the tests.
QString program();

Answer velm(const QStringList& arguments);
