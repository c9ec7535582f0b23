#include "CVelmCodeManager.h"

#include "common/host/Singleton.h"
#include "config/DatabaseWork.h"
#include "CVelmWork.h"

#include <algorithm>
#include <iterator>

using namespace velm::detail;

CVelmCodeManager* CVelmCodeManager::Instance()
{
    static Singleton<CVelmCodeManager> instance;
    return instance.get([] { return new CVelmCodeManager; });
}

CVelmCodeManager::CVelmCodeManager() = default;

CVelmCodeManager::~CVelmCodeManager() = default;

bool CVelmCodeManager::isValidCode(const QString& code)
{
    return databaseWork().isValidCode(code);
}

QStringList CVelmCodeManager::filterInValidCode(const QStringList& codes)
{
    QStringList defined;
    std::copy_if(codes.begin(), codes.end(), std::back_inserter(defined),
                 [this](const QString& code) { return isValidCode(code); });
    return defined;
}

Velm::ErrorStatus CVelmCodeManager::GetPromptByCodes(QString& choices, QString& numbers,
                                                     const QStringList& codes)
{
    const CVelmWork& work = databaseWork();
    QStringList choiceList, numberList;
    for (const QString& code : codes) {
        QString text;
        if (work.get_text(code, text) != Velm::VelmOk)
            continue;
        const QString number = QString::number(numberList.size());
        numberList.append(number);
        choiceList.append(QLatin1Char('(') + number + QLatin1Char(')') + text);
    }
    choices = choiceList.join(QLatin1Char('/'));
    numbers = numberList.join(QLatin1Char(' '));
    return choiceList.isEmpty() ? Velm::VelmInvalidValue : Velm::VelmOk;
}
