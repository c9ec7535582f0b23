#include "common/platform/Platform.h"

#include "common/host/MessageBox.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QSettings>
#include <QStandardPaths>
#include <QThread>

#include <cstdio>

#include <dlfcn.h>
#include <link.h>
#include <sys/auxv.h>
#include <sys/mman.h>
#include <unistd.h>

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

bool canShowWindows()
{
    const auto* application = qobject_cast<QApplication*>(QCoreApplication::instance());
    return application && !QCoreApplication::startingUp() && !QCoreApplication::closingDown()
           && QThread::currentThread() == application->thread();
}

QMessageBox::Icon iconOf(unsigned int style)
{
    switch (style & kBoxIcon) {
    case kBoxError:
        return QMessageBox::Critical;
    case kBoxQuestion:
        return QMessageBox::Question;
    case kBoxWarning:
        return QMessageBox::Warning;
    case kBoxInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

int showWindow(const QString& text, const QString& title, unsigned int style)
{
    QMessageBox box(iconOf(style), title, text, QMessageBox::Ok);
    box.setTextFormat(Qt::PlainText);
    if ((style & kBoxButtons) == kBoxOkCancel)
        box.addButton(QMessageBox::Cancel);
    if (style & kBoxTopmost)
        box.setWindowFlag(Qt::WindowStaysOnTopHint);
    return box.exec() == QMessageBox::Ok ? kAnswerOk : kAnswerCancel;
}

int printLine(const QString& text, const QString& title, unsigned int style)
{
    QString line = title.isEmpty() ? text : title + QStringLiteral(": ") + text;
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    std::fprintf(stderr, "%s\n", line.toLocal8Bit().constData());
    return (style & kBoxButtons) == kBoxOkCancel ? kAnswerCancel : kAnswerOk;
}

/// A part of a key's path as a file name that leads nowhere else.
QString safeFileName(QString part)
{
    part.replace(QLatin1Char('/'), QLatin1String("%2F"));
    if (part == QLatin1String(".") || part == QLatin1String(".."))
        part.replace(QLatin1Char('.'), QLatin1String("%2E"));
    return part;
}

}  // namespace

QString temporaryFolder()
{
    return QDir::tempPath() + QLatin1Char('/');
}

QString environmentVariable(const QString& name)
{
    return qEnvironmentVariable(name.toLatin1().constData());
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

bool programExports(const char* name)
{
    Dl_info program{};
    Dl_info owner{};
    const void* entry = reinterpret_cast<const void*>(getauxval(AT_ENTRY));
    const void* symbol = dlsym(RTLD_DEFAULT, name);
    return symbol && dladdr(symbol, &owner) != 0 && dladdr(entry, &program) != 0
           && owner.dli_fbase == program.dli_fbase;  // and not of another library
}

HMODULE loadModule(const QString& path)
{
    return static_cast<HMODULE>(dlopen(QFile::encodeName(path).constData(), RTLD_NOW));
}

void freeModule(HMODULE module)
{
    dlclose(module);
}

int messageBox(const QString& text, const QString& title, unsigned int style, HWND)
{
    return canShowWindows() ? showWindow(text, title, style) : printLine(text, title, style);
}

HWND foregroundWindow()
{
    return nullptr;
}

void useLargePages(void* memory, size_t size)
{
    const auto page = static_cast<quintptr>(sysconf(_SC_PAGESIZE));
    const quintptr begin = (reinterpret_cast<quintptr>(memory) + page - 1) / page * page;
    const quintptr end = (reinterpret_cast<quintptr>(memory) + size) / page * page;
    if (begin < end)  // advice that need not be taken
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

std::unique_ptr<QSettings> openRegistryKey(const QString& keyPath)
{
    QString file = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
                   + QStringLiteral("/velm/registry");
    const QStringList parts = keyPath.split(QLatin1Char('\\'), Qt::SkipEmptyParts);
    for (const QString& part : parts)
        file += QLatin1Char('/') + safeFileName(part);
    auto settings =
        std::make_unique<QSettings>(file + QStringLiteral(".ini"), QSettings::IniFormat);
    settings->setIniCodec("UTF-8");
    return settings;
}

}  // namespace velm::detail::platform
