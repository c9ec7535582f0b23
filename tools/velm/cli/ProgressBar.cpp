#include "cli/ProgressBar.h"

#include "cli/TerminalText.h"

#include "common/platform/Terminal.h"

#include <algorithm>

using namespace velm::detail;

namespace {

constexpr qint64 kFirstMs = 500;
constexpr qint64 kNextMs = 100;
constexpr int kBar = 20;  // columns

void writeError(const QString& text)
{
    platform::writeText(platform::Stream::Error, text.toUtf8());
}

}  // namespace

ProgressBar::ProgressBar() : m_width(platform::errorWidth()), m_pauseMs(kFirstMs)
{
    m_timer.start();
}

ProgressBar::~ProgressBar()
{
    clear();
}

void ProgressBar::clear()
{
    if (m_shown > 0)
        writeError(QLatin1Char('\r') + QString(m_shown, QLatin1Char(' ')) + QLatin1Char('\r'));
    m_shown = 0;
}

void ProgressBar::show(const QString& what, qint64 done, qint64 total)
{
    if (m_width == 0 || !m_timer.hasExpired(m_pauseMs))
        return;
    m_timer.restart();
    m_pauseMs = kNextMs;
    const double part =
        total > 0 ? std::min(1.0, static_cast<double>(done) / static_cast<double>(total)) : 0.0;
    const int full = static_cast<int>(part * kBar);
    const QString bar = QLatin1Char('[') + QString(full, QLatin1Char('#'))
                        + QString(kBar - full, QLatin1Char('.')) + QStringLiteral("] ")
                        + QString::number(static_cast<int>(part * 100)).rightJustified(3)
                        + QStringLiteral(" % ");
    QString line = bar + console::plain(what);
    while (!line.isEmpty() && console::displayWidth(line) >= m_width)
        line.chop(1);
    const int width = console::displayWidth(line);
    writeError(QLatin1Char('\r') + line + QString(std::max(0, m_shown - width), QLatin1Char(' ')));
    m_shown = std::max(width, 1);
}
