#include <CVelmConfigManager.h>
#include <CVelmIndex.h>
#include <CVelmWork.h>

#include <QCoreApplication>

#include <cstdio>

// Prints the name and the layer of a feature code. VELM_ROOT names the folder that holds "config".
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString code = QCoreApplication::arguments().value(1);
    QString name, layer;
    CVelmConfigManager* config = CVelmConfigManager::Instance();
    if (config->GetVelmIndex()->getName(code, name) != Velm::VelmOk)
        return 1;
    config->GetVelmWork()->get_layer(code, layer, false);
    std::printf("%s on layer %s\n", qPrintable(name), qPrintable(layer));
    return 0;
}
