// A host program for the tests of the library's start and end, of the user's store and of child
// processes: run as "host COMMAND [ARGUMENT...]", often as a copy in another folder. It prints
// UTF-8.

#include "CVelmConfigManager.h"
#include "CVelmDatabase.h"
#include "CVelmMessage.h"
#include "CVelmSaveUserData.h"
#include "CVelmSystemGlobal.h"
#include "VelmGlobalParam.h"

#include "support/Values.h"

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
    print(u"box %1 %2: %3"_s.arg(QString::number(style, 16), title, text));
    return 1;
}

CVelmSystemGlobal& system()
{
    return *CVelmSystemGlobal::Instance();
}

/// Whether the bundle is registered and the companion loaded.
void printState(const QString& when)
{
    const bool bundle = QFile::exists(u":/Translation/qt_zh_CN.qm"_s);
    const bool companion = system().addSearchPathByDllName(u"adapter_qtinit.dll"_s, 0);
    print(u"%1 %2 %3"_s.arg(when).arg(bundle).arg(companion));
}

int start(const QStringList&)
{
    system().installMessageHandler(print);
    for (int i = 0; i < 2; ++i)
        print(CVelmSystemGlobal::startModule() ? u"started"_s : u"not started"_s);
    QMessageLogger("host.cpp", 1, "start").warning("logged");
    print(QCoreApplication::translate("QPlatformTheme", "Cancel"));
    printState(u"before"_s);
    CVelmSystemGlobal::stopModule();
    CVelmSystemGlobal::stopModule();
    printState(u"stopped"_s);
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
                                     : u"nothing"_s);
    return 0;
}

/// Saves one long text after the other until it is killed.
int saveForEver(const QStringList&)
{
    for (char16_t letter = u'a';; letter = letter == u'z' ? u'a' : char16_t(letter + 1)) {
        g_VelmGlobalParam.m_mustFieldData.m_symbolText = QString(100000, QChar(letter));
        if (!system().saveGlobalParam(false))
            return 1;
        print(u"saved"_s);
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

/// Eight numbers of the parameters, from different groups of them.
constexpr int kNumbers = 8;
int& number(int which)
{
    VelmSortRule& rule = g_VelmGlobalParam.m_sortRule;
    int* const numbers[kNumbers] = {&rule.m_SortMode,
                                    &rule.m_SortType,
                                    &rule.m_SortPoint,
                                    &rule.m_SortDir1,
                                    &rule.m_SortDir2,
                                    &rule.m_DrawDirection,
                                    &g_VelmGlobalParam.m_commandInfo.m_SaveDwgVersion,
                                    &g_VelmGlobalParam.m_drawModeParam.m_DrawMode};
    return *numbers[which];
}

bool setInput(const QString& name, const QString& value)
{
    return CVelmSaveUserData::Instance()->setUserInput(u"t"_s, name, value);
}

/// Sets one of the numbers and one value of the store 40 times, beside others that do the same.
int setOften(const QStringList& arguments)
{
    const int which = arguments.value(0).toInt();
    for (int i = 1; i <= 40; ++i) {
        number(which) = 100 * (which + 1) + i;
        if (!atLast([] { return system().saveGlobalParam(false); })
            || !atLast([&] { return setInput(u"n%1"_s.arg(i), QString::number(which)); }))
            return 1;
    }
    return 0;
}

int showNumbers(const QStringList&)
{
    system().initGlobalParam();
    for (int which = 0; which < kNumbers; ++which)
        print(QString::number(number(which)));
    return 0;
}

/// Asks for objects of the library from what the library calls while it makes them.
int askBack(const QStringList&)
{
    CVelmMessage::installPresenter([](const QString&, const QString&, unsigned int, HWND) {
        print(CVelmSaveUserData::Instance() ? u"box"_s : QString());
        return 1;
    });
    system().installMessageHandler(
        [](const QString&) { print(CVelmConfigManager::Instance() ? u"line"_s : QString()); });
    CVelmConfigManager::Instance();
    CVelmSaveUserData::Instance();
    return 0;
}

/// Uses databases and parameters before there is an application object, and with two of them.
int early(int argc, char** argv)
{
    const auto say = [](const QString& when) {
        const bool isSaved = setInput(u"n"_s, u"v"_s);
        CVelmDatabase database;
        const int status = database.initDatabase(CVelmSaveUserData::fileName(), QString());
        print(u"%1 %2 %3"_s.arg(when).arg(isSaved).arg(status));
    };
    say(u"before"_s);
    set({u"early"_s});
    CVelmSystemGlobal::stopModule();
    const QString saved =
        CVelmSaveUserData::Instance()->userInput(u"GlobalParam"_s, u"VelmGlobalParam"_s);
    print(saved.contains(u"early"_s) ? u"saved"_s : u"lost"_s);
    {
        const QCoreApplication first(argc, argv);
        say(u"after"_s);
    }
    const QCoreApplication second(argc, argv);
    return set({u"second"_s});
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

const QMap<QString, int (*)(const QStringList& arguments)> kCommands{
    {u"start"_s, start},        {u"set"_s, set},
    {u"show"_s, show},          {u"save-for-ever"_s, saveForEver},
    {u"set-often"_s, setOften}, {u"show-numbers"_s, showNumbers},
    {u"ask-back"_s, askBack},   {u"end-with-lock"_s, endWithLock},
    {u"fatal"_s, fatal},        {u"echo"_s, echo},
    {u"echo-late"_s, echoLate},
};

}  // namespace

int main(int argc, char** argv)
{
    CVelmMessage::installPresenter(printBox);
    if (argc == 2 && qstrcmp(argv[1], "early") == 0)
        return early(argc, argv);
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const auto run = kCommands.value(arguments.value(1), nullptr);
    return run ? run(arguments.mid(2)) : 99;
}
