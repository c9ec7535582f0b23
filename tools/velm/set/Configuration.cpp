#include "set/Configuration.h"

#include "cli/Console.h"
#include "cli/Root.h"
#include "set/Readable.h"

#include "CVelmConfigManager.h"
#include "CVelmIndex.h"
#include "CVelmSystemGlobal.h"
#include "CVelmWork.h"

int Configuration::open(const Arguments& arguments, Configuration& configuration)
{
    const int selected = selectRoot(arguments);
    if (selected != ExitFine)
        return selected;
    const QString problem = whySystemUnreadable();
    if (!problem.isEmpty()) {
        console::tell(QStringLiteral("cannot open \"%1\": ")
                          .arg(CVelmSystemGlobal::Instance()->getSystemConfigDb())
                      + problem);
        return ExitCannotOpen;
    }
    configuration.m_manager = CVelmConfigManager::Instance();
    return ExitFine;
}

const CVelmIndex& Configuration::index() const
{
    return *m_manager->GetVelmIndex();
}

const CVelmWork& Configuration::work() const
{
    return *m_manager->GetVelmWork();
}
