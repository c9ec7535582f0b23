#include "common/platform/Platform.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>
#include <link.h>

namespace velm::detail::platform {

namespace {

QString programPath()
{
    return QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget();
}

struct ModuleSearch
{
    QString name;    // what is looked for
    bool wholePath;  // compare the path, not the file name
    QString found;
};

int visitModule(dl_phdr_info* info, size_t, void* data)
{
    auto* search = static_cast<ModuleSearch*>(data);
    const QString path = QFile::decodeName(info->dlpi_name);
    if (path.isEmpty())
        return 0;  // the program itself
    const QFileInfo file(path);
    const bool matches = search->wholePath ? file.canonicalFilePath() == search->name
                                           : file.fileName() == search->name;
    if (matches)
        search->found = file.absoluteFilePath();
    return matches ? 1 : 0;
}

}  // namespace

QString temporaryFolder()
{
    return QDir::tempPath() + QLatin1Char('/');
}

QString modulePath(HINSTANCE module)
{
    if (!module)
        return programPath();
    link_map* map = nullptr;
    if (dlinfo(module, RTLD_DI_LINKMAP, &map) != 0 || !map)
        return QString();
    const QString path = QFile::decodeName(map->l_name);
    return path.isEmpty() ? programPath() : QFileInfo(path).absoluteFilePath();
}

QString modulePathByName(const QString& name)
{
    ModuleSearch search{name, name.contains(QLatin1Char('/')), QString()};
    if (search.wholePath)
        search.name = QFileInfo(name).canonicalFilePath();
    if (!search.name.isEmpty())
        dl_iterate_phdr(visitModule, &search);
    return search.found;
}

QString libraryPath()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void*>(&libraryPath), &info) || !info.dli_fname)
        return programPath();
    return QFileInfo(QFile::decodeName(info.dli_fname)).absoluteFilePath();
}

}  // namespace velm::detail::platform
