#include "common/Module.h"

#include "common/MessageBox.h"
#include "common/MessageHandler.h"
#include "common/platform/Platform.h"
#include "CVelmFindFile.h"
#include "CVelmMessage.h"
#include "CVelmSystemGlobal.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>
#include <QResource>
#include <QTranslator>

namespace velm::detail::module {

const QString kProjectKey = QStringLiteral("project.velm");

namespace {

struct State
{
    HINSTANCE library = nullptr;
    HMODULE adapter = nullptr;
    bool attached = false;  // start() was called, stop() not yet
    bool bundleRegistered = false;
    bool complete = false;  // start-up succeeded
};

State state;

QString bundleName()
{
    return QStringLiteral("VelmResource.rcc");
}

bool registerBundle()
{
    const QString path = findFile(bundleName());
    if (path.isEmpty())  // the text lacks its closing bracket, which is wanted so
        CVelmMessage::errorMsg(QStringLiteral("无法找到资源文件[VelmResource.rcc"), nullptr,
                               QStringLiteral("错误"));
    if (QResource::registerResource(path, QString()))
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

}  // namespace

void setHandle(HINSTANCE library)
{
    state.library = library;
}

bool hostStarts()
{
    return qgetenv("VELM_START") == "host";
}

bool start()
{
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
    if (!state.attached)
        return;
    saveParametersAtEnd();
    QResource::unregisterResource(findFile(bundleName()), QString());
    if (state.adapter)
        platform::freeModule(state.adapter);
    const HINSTANCE library = state.library;
    state = State();
    state.library = library;
}

QString findFile(const QString& name)
{
    QString path = CVelmFindFile::Instance()->findFile(name, true);
    if (path.isEmpty()) {
        const QString folder = QFileInfo(platform::modulePath(state.library)).path();
        path = CVelmFindFile::Instance()->findFile(folder, name, false);
    }
    return path;
}

}  // namespace velm::detail::module
