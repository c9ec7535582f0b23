#pragma once

#include "CVelmMessage.h"

#include <QString>
#include <QStringList>

#include <utility>

/// Answers the message boxes of the library while it lives, and keeps what they say. Compiled with
/// each program: they reach the library in different ways.
class Boxes
{
public:
    Boxes()
    {
        s_answer = 1;
        CVelmMessage::installPresenter(present);
    }
    ~Boxes()
    {
        CVelmMessage::installPresenter(nullptr);
        s_shown.clear();
    }
    Q_DISABLE_COPY(Boxes)

    /// The boxes since the last call, one a line: style in hexadecimal digits, title and text.
    static QString take() { return std::exchange(s_shown, {}).join(QLatin1Char('\n')); }

    /// What the user presses: 1 for OK, 2 for Cancel.
    static void answer(int button) { s_answer = button; }

private:
    static int present(const QString& text, const QString& title, unsigned int style, HWND)
    {
        s_shown.append(QStringLiteral("%1 %2: %3").arg(QString::number(style, 16), title, text));
        return s_answer;
    }

    inline static QStringList s_shown;
    inline static int s_answer = 1;
};
