#pragma once

#include "VelmCommonGlobal.h"

#include <QString>

/// Message boxes with the icon of their severity.
/// On Windows they are those of MessageBoxW. Elsewhere a QMessageBox shows in the GUI thread of a
/// running QApplication; without one the text goes to standard error as one line and the answer is
/// OK, or Cancel to a question. Without a @p parent the foreground window owns the box and it stays
/// on top. May be called from any thread as far as the presenter can.
class VELMCOMMON_EXPORT CVelmMessage
{
public:
    virtual ~CVelmMessage() = default;

    /// Information. @return what MessageBoxW answers: 1 (IDOK), 2 (IDCANCEL), 0 if it failed
    static int showMsg(const QString& text, HWND parent = nullptr,
                       const QString& title = QString());
    /// Warning; the rest like showMsg().
    static int warnMsg(const QString& text, HWND parent = nullptr,
                       const QString& title = QString());
    /// Error; the rest like showMsg().
    static int errorMsg(const QString& text, HWND parent = nullptr,
                        const QString& title = QString());
    /// Asks for OK or Cancel. The title stands before the window here, which is part of the
    /// interface.
    /// @return 0 for OK, 1 for Cancel, -1 if the box failed
    static int question(const QString& text, const QString& title = QString(),
                        HWND parent = nullptr);

    /// Shows a message box with a MessageBoxW style and answers like MessageBoxW.
    using Presenter = int (*)(const QString& text, const QString& title, unsigned int style,
                              HWND owner);
    /// Lets @p presenter show every message box of the library from now on; null restores the
    /// default. It must be callable from any thread that uses the library.
    static void installPresenter(Presenter presenter);
};
