#pragma once

#include "VelmCommonGlobal.h"

#include <QString>

namespace velm::detail {

// Styles of MessageBoxW.
constexpr unsigned int kBoxOk = 0x0;
constexpr unsigned int kBoxOkCancel = 0x1;
constexpr unsigned int kBoxError = 0x10;
constexpr unsigned int kBoxQuestion = 0x20;
constexpr unsigned int kBoxWarning = 0x30;
constexpr unsigned int kBoxInformation = 0x40;
constexpr unsigned int kBoxTopmost = 0x40000;
constexpr unsigned int kBoxButtons = 0xF;
constexpr unsigned int kBoxIcon = 0xF0;

// Answers of MessageBoxW.
constexpr int kAnswerOk = 1;
constexpr int kAnswerCancel = 2;

/// Shows a message box through the presenter that CVelmMessage keeps. A null @p owner stays null.
int showMessageBox(const QString& text, const QString& title, unsigned int style, HWND owner);

/// From now on no box is shown: each is answered with OK, a question with Cancel.
void silenceMessageBoxes();

/// A plain box with an OK button, titled "错误信息" and owned by the foreground window.
int showPlainError(const QString& text);

}  // namespace velm::detail
