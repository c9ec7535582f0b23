#include "common/host/Module.h"

#include "common/files/FolderWalk.h"
#include "common/files/SearchPaths.h"
#include "common/host/MessageBox.h"
#include "common/host/MessageHandler.h"
#include "common/host/Singleton.h"
#include "common/platform/Platform.h"
#include "CVelmMessage.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>
#include <QResource>
#include <QTranslator>

#include <algorithm>

namespace velm::detail::module {

const QString kProjectKey = QStringLiteral("project.velm");

namespace {

struct State
{
    HMODULE adapter = nullptr;
    bool attached = false;  // start() was called, stop() not yet
    bool bundleRegistered = false;
    bool complete = false;  // start-up succeeded
};

State state;

constexpr int kMostEntries = 10000;  // a search path may be a whole disk, and every start waits

QString findDirectly(const QStringList& folders, const QString& name)
{
    for (const QString& folder : folders) {
        const QFileInfo file(folder + QLatin1Char('/') + name);
        if (file.isFile())
            return file.absoluteFilePath();
    }
    return QString();
}

QString findBelow(const QStringList& folders, const QString& name)
{
    QString found;
    FolderWalk walk(true, kMostEntries);
    const auto visit = [&](const QFileInfo& entry) {
        if (!isFile(entry) || entry.fileName().compare(name, Qt::CaseInsensitive) != 0)
            return false;
        found = entry.absoluteFilePath();
        return true;
    };
    std::any_of(folders.begin(), folders.end(),
                [&](const QString& folder) { return walk.walk(folder, visit); });
    return found;
}

/// Whether the program opens configurations of others: what is loaded comes from no folder of
/// theirs then. Asked so early that a program has no other way to tell.
bool keepsToOwnFolder()
{
    return platform::programExports("velmKeepsToLibraryFolder");
}

QString bundleName()
{
    return QStringLiteral("VelmResource.rcc");
}

bool registerBundle()
{
    const QString path = findFile(bundleName());
    if (path.isEmpty())  // a host that presents the boxes may know the text, without its bracket
        CVelmMessage::errorMsg(QStringLiteral("无法找到资源文件[VelmResource.rcc"), nullptr,
                               QStringLiteral("错误"));
    if (!path.isEmpty() && QResource::registerResource(path, QString()))
        return true;
    CVelmMessage::errorMsg(QStringLiteral("初始化资源文件失败！！！"), nullptr,
                           QStringLiteral("错误"));
    return false;
}

/// False if there is no such file; one that does not load counts as loaded.
bool loadAdapter()
{
    const QString path = findFile(QStringLiteral("adapter_qtinit.dll"));
    if (path.isEmpty()) {
        showPlainError(QStringLiteral("无法找到文件[adapter_qtinit.dll]"));
        return false;
    }
    state.adapter = platform::loadModule(path);
    return true;
}

/// Installs the translation once into each application object. It is never deleted.
void installTranslation()
{
    static QTranslator* translator = nullptr;
    static QPointer<QCoreApplication> translated;
    QCoreApplication* application = QCoreApplication::instance();
    if (!application || translated == application)
        return;
    if (!translator)
        translator = new QTranslator;
    // A copy of the name: Qt keeps it longer than the library may be loaded.
    if (translator->isEmpty())
        translator->load(QString::fromLatin1(":/Translation/qt_zh_CN.qm"));
    QCoreApplication::installTranslator(translator);
    translated = application;
}

void (*workAtEnd)() = nullptr;

void save()
{
    if (workAtEnd && !singletonsAreGone)
        workAtEnd();
}

}  // namespace

bool callAtEnd(void (*work)())
{
    workAtEnd = work;
    return true;
}

bool hostStarts()
{
    return platform::environmentVariable(QStringLiteral("VELM_START")) == QLatin1String("host");
}

bool start()
{
    saveWithApplication();
    state.attached = true;
    if (!state.complete) {
        if (!state.bundleRegistered)
            state.bundleRegistered = registerBundle();
        if (!loadAdapter())
            return false;
    }
    installTranslation();
    if (!state.complete)
        qInstallMessageHandler(handleMessage);
    state.complete = true;
    return true;
}

void stop()
{
    save();
    if (!state.attached || singletonsAreGone)
        return;
    QResource::unregisterResource(findFile(bundleName()), QString());
    if (state.adapter)
        platform::freeModule(state.adapter);
    state = State();
}

void saveWithApplication()
{
    forgetApplication();
    qAddPostRoutine(save);
}

void forgetApplication()
{
    qRemovePostRoutine(save);
}

QString findFile(const QString& name)
{
    const QString beside = QFileInfo(platform::libraryPath()).path();
    if (keepsToOwnFolder())
        return findDirectly({beside}, name);
    const QStringList paths = SearchPaths::instance().folders();
    const QString direct = findDirectly(paths + QStringList{beside}, name);
    return direct.isEmpty() ? findBelow(paths, name) : direct;
}

}  // namespace velm::detail::module
