// Prints the name and the layer of a feature code of the configuration that VELM_ROOT names.

#include <CVelmConfigManager.h>
#include <CVelmIndex.h>
#include <CVelmWork.h>

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString code = QCoreApplication::arguments().value(1);
    QString name;
    QString layer;
    CVelmConfigManager* config = CVelmConfigManager::Instance();
    if (config->GetVelmIndex()->getName(code, name) != Velm::VelmOk)
        return 1;
    config->GetVelmWork()->get_layer(code, layer, false);
    std::printf("%s on layer %s\n", qUtf8Printable(name), qUtf8Printable(layer));
    return 0;
}
