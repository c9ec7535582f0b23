#include "check/Baseline.h"

#include "check/Report.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QSaveFile>

namespace {

const QString kKnown = QStringLiteral("known");
const QString kFingerprint = QStringLiteral("fingerprint");
const QString kCount = QStringLiteral("count");

}  // namespace

QString Baseline::read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return path + QStringLiteral(": ") + file.errorString();
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (error.error != QJsonParseError::NoError)
        return QStringLiteral("%1: %2 at offset %3")
            .arg(path, error.errorString())
            .arg(error.offset);
    if (!document[kKnown].isArray())
        return path + QStringLiteral(": no baseline; \"velm check --write-baseline\" makes one");
    const QJsonArray known = document[kKnown].toArray();
    for (const auto& finding : known)
        m_known[finding[kFingerprint].toString()] += finding[kCount].toInt(1);
    return QString();
}

QVector<Problem> Baseline::unknown(const QVector<Problem>& problems) const
{
    QHash<QString, int> left = m_known;
    QVector<Problem> unknown;
    for (const Problem& problem : problems) {
        if (--left[problem.fingerprint()] < 0)
            unknown.append(problem);
    }
    return unknown;
}

QString Baseline::write(const QVector<Problem>& problems, const QString& path)
{
    QMap<QString, QJsonObject> known;  // in an order that does not change from run to run
    for (const Problem& problem : problems) {
        QJsonObject& finding = known[problem.fingerprint()];
        finding.insert(kFingerprint, problem.fingerprint());
        finding.insert(kCount, finding.value(kCount).toInt() + 1);
        finding.insert(QStringLiteral("rule"), QLatin1String(problem.rule->id));
        finding.insert(QStringLiteral("place"), report::textOf(problem.place));
    }
    QJsonArray list;
    for (const QJsonObject& finding : qAsConst(known))
        list.append(finding);
    const QByteArray text = QJsonDocument(QJsonObject{{kKnown, list}}).toJson();
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit())
        return QString();
    return path + QStringLiteral(": ") + file.errorString();
}
