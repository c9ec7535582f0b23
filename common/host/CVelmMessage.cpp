#include "CVelmMessage.h"

#include "common/host/MessageBox.h"
#include "common/platform/Platform.h"

#include <atomic>

namespace velm::detail {

namespace {

std::atomic<CVelmMessage::Presenter> installedPresenter{nullptr};

int answerUnseen(const QString&, const QString&, unsigned int style, HWND)
{
    return (style & kBoxButtons) == kBoxOkCancel ? kAnswerCancel : kAnswerOk;
}

int showOnTopOrOwned(const QString& text, const QString& title, unsigned int style, HWND parent)
{
    if (parent)
        return showMessageBox(text, title, style, parent);
    return showMessageBox(text, title, style | kBoxTopmost, platform::foregroundWindow());
}

}  // namespace

int showMessageBox(const QString& text, const QString& title, unsigned int style, HWND owner)
{
    const CVelmMessage::Presenter presenter = installedPresenter;
    return presenter ? presenter(text, title, style, owner)
                     : platform::messageBox(text, title, style, owner);
}

void silenceMessageBoxes()
{
    installedPresenter = answerUnseen;
}

int showPlainError(const QString& text)
{
    return showMessageBox(text, QStringLiteral("错误信息"), kBoxOk, platform::foregroundWindow());
}

}  // namespace velm::detail

using namespace velm::detail;

int CVelmMessage::showMsg(const QString& text, HWND parent, const QString& title)
{
    return showOnTopOrOwned(text, title, kBoxInformation, parent);
}

int CVelmMessage::warnMsg(const QString& text, HWND parent, const QString& title)
{
    return showOnTopOrOwned(text, title, kBoxWarning, parent);
}

int CVelmMessage::errorMsg(const QString& text, HWND parent, const QString& title)
{
    return showOnTopOrOwned(text, title, kBoxError, parent);
}

int CVelmMessage::question(const QString& text, const QString& title, HWND parent)
{
    return showOnTopOrOwned(text, title, kBoxQuestion | kBoxOkCancel, parent) - 1;
}

void CVelmMessage::installPresenter(Presenter presenter)
{
    installedPresenter = presenter;
}
