// A host program for the tests of the library's start and end, of the user's store and of child
// processes: run as "host COMMAND [ARGUMENT...]", often as a copy in another folder. It prints
// UTF-8.

#include "CVelmConfigManager.h"
#include "CVelmDatabase.h"
#include "CVelmMessage.h"
#include "CVelmSaveUserData.h"
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

/// Makes an attempt until it succeeds: on a slow disk it may be refused for the locks of others.
template<class Attempt>
bool atLast(const Attempt& attempt)
{
    for (int i = 0; i < 10; ++i) {
        if (attempt())
            return true;
    }
    return false;
}

/// Sets one of eight parameters and one value of the store 40 times, beside others that do the
/// same.
int setOften(const QStringList& arguments)
{
    VelmGlobalParam& param = g_VelmGlobalParam;
    int* const numbers[] = {
        &param.m_sortRule.m_SortMode,          &param.m_sortRule.m_SortType,
        &param.m_sortRule.m_SortPoint,         &param.m_sortRule.m_SortDir1,
        &param.m_sortRule.m_SortDir2,          &param.m_sortRule.m_DrawDirection,
        &param.m_commandInfo.m_SaveDwgVersion, &param.m_drawModeParam.m_DrawMode};
    const int which = arguments.value(0).toInt();
    for (int i = 1; i <= 40; ++i) {
        *numbers[which] = 100 * (which + 1) + i;
        const QString name = QStringLiteral("n%1").arg(i);
        if (!atLast([] { return system().saveGlobalParam(false); }) || !atLast([&] {
                return CVelmSaveUserData::Instance()->setUserInput(QStringLiteral("t"), name,
                                                                   QString::number(which));
            }))
            return 1;
    }
    return 0;
}

int showNumbers(const QStringList&)
{
    system().initGlobalParam();
    const VelmGlobalParam& param = g_VelmGlobalParam;
    const VelmSortRule& rule = param.m_sortRule;
    print(QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8")
              .arg(rule.m_SortMode)
              .arg(rule.m_SortType)
              .arg(rule.m_SortPoint)
              .arg(rule.m_SortDir1)
              .arg(rule.m_SortDir2)
              .arg(rule.m_DrawDirection)
              .arg(param.m_commandInfo.m_SaveDwgVersion)
              .arg(param.m_drawModeParam.m_DrawMode));
    return 0;
}

/// Asks for objects of the library from what the library calls while it makes them.
int askBack(const QStringList&)
{
    CVelmMessage::installPresenter([](const QString&, const QString&, unsigned int, HWND) {
        print(CVelmSaveUserData::Instance() ? QStringLiteral("box") : QString());
        return 1;
    });
    system().installMessageHandler([](const QString&) {
        print(CVelmConfigManager::Instance() ? QStringLiteral("line") : QString());
    });
    CVelmConfigManager::Instance();
    CVelmSaveUserData::Instance();
    return 0;
}

/// Uses databases and parameters before there is an application object, and with two of them.
int early(int argc, char** argv)
{
    const auto say = [](const char* when) {
        CVelmDatabase database;
        print(QStringLiteral("%1 %2 %3")
                  .arg(QLatin1String(when))
                  .arg(CVelmSaveUserData::Instance()->setUserInput(
                      QStringLiteral("t"), QStringLiteral("n"), QStringLiteral("v")))
                  .arg(database.initDatabase(CVelmSaveUserData::fileName(), QString())));
    };
    say("before");
    set({QStringLiteral("early")});
    CVelmSystemGlobal::stopModule();
    print(CVelmSaveUserData::Instance()
                  ->userInput(QStringLiteral("GlobalParam"), QStringLiteral("VelmGlobalParam"))
                  .contains(QStringLiteral("early"))
              ? QStringLiteral("saved")
              : QStringLiteral("lost"));
    {
        const QCoreApplication first(argc, argv);
        say("after");
    }
    const QCoreApplication second(argc, argv);
    return set({QStringLiteral("second")});
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
    {"start", start},        {"set", set},
    {"show", show},          {"save-for-ever", saveForEver},
    {"set-often", setOften}, {"show-numbers", showNumbers},
    {"ask-back", askBack},   {"end-with-lock", endWithLock},
    {"fatal", fatal},        {"echo", echo},
    {"echo-late", echoLate},
};

}  // namespace

int main(int argc, char** argv)
{
    CVelmMessage::installPresenter(printBox);
    if (argc == 2 && qstrcmp(argv[1], "early") == 0)
        return early(argc, argv);
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    for (const Command& command : kCommands) {
        if (arguments.value(1) == QLatin1String(command.name))
            return command.run(arguments.mid(2));
    }
    return 99;
}
