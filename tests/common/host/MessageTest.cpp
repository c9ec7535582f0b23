#include "common/host/MessageHandler.h"
#include "CVelmBaseObject.h"
#include "CVelmEvent.h"
#include "CVelmMessage.h"
#include "CVelmObjectManager.h"

#include "support/Boxes.h"
#include "support/LocalCodec.h"
#include "support/Values.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QMetaMethod>
#include <QTimer>

#include <memory>
#include <thread>

using namespace velm::detail;

TEST(Message, HasTheIconOfItsSeverityAndStaysOnTopWithoutAWindow)
{
    Boxes boxes;
    const auto window = reinterpret_cast<HWND>(0x10);
    EXPECT_EQ(CVelmMessage::showMsg(u"a"_s), 1);
    EXPECT_EQ(CVelmMessage::warnMsg(u"b"_s, nullptr, u"警告"_s), 1);
    EXPECT_EQ(CVelmMessage::errorMsg(u"c"_s, window, u"t"_s), 1);
    EXPECT_EQ(CVelmMessage::question(u"d?"_s, u"t"_s), 0);
    Boxes::answer(2);
    EXPECT_EQ(CVelmMessage::question(u"e?"_s, u"t"_s, window), 1);
    EXPECT_EQ(boxes.take(), u"40040 : a\n40030 警告: b\n10 t: c\n40021 t: d?\n21 t: e?"_s);
}

#ifndef Q_OS_WIN
TEST(Message, IsAWindowInTheGuiThreadAndALineElsewhere)
{
    QString shown;
    QTimer::singleShot(0, qApp, [&shown] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        shown = box->windowTitle() + box->text() + QString::number(box->icon());
        box->button(QMessageBox::Cancel)->click();
    });
    EXPECT_EQ(CVelmMessage::question(u"<b>删除？"_s, u"t"_s), 1);
    EXPECT_EQ(shown, u"t<b>删除？"_s + QString::number(QMessageBox::Question));

    const LocalCodec utf8("UTF-8");
    testing::internal::CaptureStderr();
    int answers = 0;
    std::thread([&answers] {
        answers = 10 * CVelmMessage::errorMsg(u"二\n行"_s, nullptr, u"错误"_s)
                  + CVelmMessage::question(u"sure?"_s);
    }).join();
    EXPECT_EQ(answers, 11) << "OK, and Cancel to a question";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "错误: 二 行\nsure?\n");
}
#endif

TEST(Event, IsAskedAndAnsweredBySignals)
{
    // Hosts may address the signals by number.
    const QMetaObject& meta = CVelmEvent::staticMetaObject;
    const char* const signatures[] = {"setErrorMsg(QString)", "UpdateWorkSpaceDomainArea(QString)",
                                      "UpdateEntArea(QString,bool)"};
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(meta.method(meta.methodOffset() + i).methodSignature(), signatures[i]);

    CVelmEvent* event = CVelmEvent::Instance();
    EXPECT_TRUE(event->UpdateEntArea(u"g"_s, true).isEmpty()) << "nobody is connected";
    const auto connection =
        QObject::connect(event, &CVelmEvent::UpdateEntArea, [](const QString& guid, bool force) {
            return QMap<QString, QVariant>{{guid, force}};
        });
    EXPECT_EQ(event->UpdateEntArea(u"g"_s, true), (QMap<QString, QVariant>{{u"g"_s, true}}));
    QObject::disconnect(connection);
}

TEST(BaseObject, SharesItsPrivateObjectWithCopies)
{
    using Witness = std::shared_ptr<int>;
    struct Data : CVelmBaseObjectPrivate
    {
        explicit Data(const Witness& kept) : m_kept(kept) {}
        Witness m_kept;
    };
    struct Object : CVelmBaseObject
    {
        explicit Object(CVelmBaseObjectPrivate* data) : CVelmBaseObject(data) {}
    };
    const auto witness = std::make_shared<int>();
    auto object = std::make_unique<Object>(new Data(witness));
    Object copy(nullptr);
    copy = *object;
    object.reset();
    EXPECT_EQ(witness.use_count(), 2);
    EXPECT_EQ(copy.velmObjectGuid(), QString());
    copy = Object(nullptr);
    EXPECT_EQ(witness.use_count(), 1);
    EXPECT_TRUE(CVelmObjectManager::Instance()->RegisterClassW(nullptr));
}

namespace {

QStringList lines;

QString logged(QtMsgType type, const char* file, const char* function, const QString& message)
{
    lines.clear();
    setLogCallback([](const QString& line) { lines.append(line); });
    handleMessage(type, QMessageLogContext(file, 12, function, "category"), message);
    setLogCallback(nullptr);
    handleMessage(type, QMessageLogContext(), u"dropped"_s);
    return lines.join(u"|"_s);
}

}  // namespace

TEST(MessageHandler, FormatsOneLineForEachMessage)
{
    EXPECT_EQ(logged(QtDebugMsg, "D:\\src\\a\\draw", "f", u"x"_s),
              u"Debug: File:draw Function:f Line:12 Content:x"_s);
    EXPECT_EQ(logged(QtWarningMsg, "/a/b.cpp", "g", u"%1 y"_s),
              u"Warning: File:b.cpp Function:g Line:12 Content:%1 y"_s);
    EXPECT_EQ(logged(QtCriticalMsg, nullptr, nullptr, u"z"_s),
              u"Critical: File: Function: Line:12 Content:z"_s);
    EXPECT_EQ(logged(QtInfoMsg, "a", "f", u"x"_s), QString()) << "a type without a format";
    EXPECT_EQ(lines.size(), 1) << "is handed on as an empty line";
    const LocalCodec gbk("GBK");
    EXPECT_EQ(logged(QtDebugMsg, "D:\\\x81\x5c.cpp", "f", u"x"_s),
              u"Debug: File:\u4E57.cpp Function:f Line:12 Content:x"_s)
        << "the trail byte 0x5C is no separator";
}
