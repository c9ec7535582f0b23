#pragma once

#include "support/TemporaryRoot.h"
#include "support/Tool.h"

#include <QJsonArray>
#include <QJsonObject>

/// A configuration of the sample set, checked by the program.
class CheckTest : public TemporaryRoot
{
protected:
    CheckTest() { EXPECT_EQ(velm({u"init"_s, root()}).exitCode, 0); }

    Answer check(const QStringList& options) const
    {
        return velm(QStringList{u"--root"_s, root(), u"check"_s} + options);
    }

    /// "rule table column value" of each finding.
    static QStringList found(const Answer& answer)
    {
        QStringList list;
        for (const QJsonValue& finding : answer.json.array()) {
            QStringList parts;
            for (const char* key : {"rule", "table", "column", "value"})
                parts.append(
                    finding[QLatin1String(key)].toString().left(32).replace(QChar::Null, u'␀'));
            list.append(parts.join(QLatin1Char(' ')).trimmed());
        }
        list.sort();
        return list;
    }
};
