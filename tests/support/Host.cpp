// A host program for the tests of the library's start and end, of the user's store and of child
// processes: run as "host COMMAND [ARGUMENT...]", often as a copy in another folder. It prints
// UTF-8.

#include "CVelmMessage.h"
#include "CVelmSystemGlobal.h"
#include "VelmGlobalParam.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QSemaphore>

#include <chrono>
#include <cstdio>
#include <thread>

namespace {

void print(const QString& line)
{
    std::printf("%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

int printBox(const QString& text, const QString& title, unsigned int style, HWND)
{
    print(QStringLiteral("box %1 %2: %3").arg(QString::number(style, 16), title, text));
    return 1;
}

CVelmSystemGlobal& system()
{
    return *CVelmSystemGlobal::Instance();
}

/// Whether the bundle is registered and the companion loaded.
void printState(const char* when)
{
    const bool bundle = QFile::exists(QStringLiteral(":/Translation/qt_zh_CN.qm"));
    const bool companion = system().addSearchPathByDllName(QStringLiteral("adapter_qtinit.dll"), 0);
    print(QStringLiteral("%1 %2 %3").arg(QLatin1String(when)).arg(bundle).arg(companion));
}

int start(const QStringList&)
{
    system().installMessageHandler(print);
    for (int i = 0; i < 2; ++i)
        print(CVelmSystemGlobal::startModule() ? QStringLiteral("started")
                                               : QStringLiteral("not started"));
    QMessageLogger("host.cpp", 1, "start").warning("logged");
    print(QCoreApplication::translate("QPlatformTheme", "Cancel"));
    printState("before");
    CVelmSystemGlobal::stopModule();
    CVelmSystemGlobal::stopModule();
    printState("stopped");
    return 0;
}

/// Changes a setting and leaves the saving to the end of the library.
int set(const QStringList& arguments)
{
    system().initGlobalParam();
    g_VelmGlobalParam.m_mustFieldData.m_symbolText = arguments.value(0);
    return 0;
}

int show(const QStringList&)
{
    system().installMessageHandler(print);
    print(system().initGlobalParam() ? g_VelmGlobalParam.m_mustFieldData.m_symbolText
                                     : QStringLiteral("nothing"));
    return 0;
}

/// Saves one long text after the other until it is killed.
int saveForEver(const QStringList&)
{
    for (char16_t letter = u'a';; letter = letter == u'z' ? u'a' : char16_t(letter + 1)) {
        g_VelmGlobalParam.m_mustFieldData.m_symbolText = QString(100000, QChar(letter));
        if (!system().saveGlobalParam(false))
            return 1;
        print(QStringLiteral("saved"));
    }
}

QSemaphore inCallback;

/// Ends the process while another thread is in the handler of messages, and has its lock.
int endWithLock(const QStringList& arguments)
{
    CVelmSystemGlobal::startModule();
    set(arguments);
    system().installMessageHandler([](const QString&) {
        inCallback.release();
        for (;;)
            std::this_thread::sleep_for(std::chrono::hours(1));
    });
    std::thread([] { qWarning("stays in the handler"); }).detach();
    inCallback.acquire();
    return 0;
}

int fatal(const QStringList&)
{
    CVelmSystemGlobal::startModule();
    system().installMessageHandler(print);
    QMessageLogger("host.cpp", 1, "f").fatal("must not be handed on");
    return 0;
}

/// Writes the current folder and the arguments behind the first into the file that the first names.
int echo(const QStringList& arguments)
{
    QFile file(arguments.value(0));
    if (!file.open(QIODevice::WriteOnly))
        return 1;
    const QStringList lines = QStringList{QDir::current().dirName()} + arguments.mid(1);
    file.write(lines.join(QLatin1Char('\n')).toUtf8());
    return 7;
}

/// The same after a while.
int echoLate(const QStringList& arguments)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    return echo(arguments);
}

struct Command
{
    const char* name;
    int (*run)(const QStringList& arguments);
};

constexpr Command kCommands[] = {
    {"start", start},
    {"set", set},
    {"show", show},
    {"save-for-ever", saveForEver},
    {"end-with-lock", endWithLock},
    {"fatal", fatal},
    {"echo", echo},
    {"echo-late", echoLate},
};

}  // namespace

int main(int argc, char** argv)
{
    CVelmMessage::installPresenter(printBox);
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    for (const Command& command : kCommands) {
        if (arguments.value(1) == QLatin1String(command.name))
            return command.run(arguments.mid(2));
    }
    return 99;
}
