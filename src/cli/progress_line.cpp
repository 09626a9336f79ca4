#include "cli/progress_line.h"

#include "platform/terminal.h"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

/// Back to the start of the line, and away with what stands there.
constexpr char wipe[] = "\r\033[K";

} // namespace

ProgressLine::ProgressLine()
    : m_isTerminal(platform::isTerminal(stderr))
{}

void ProgressLine::show(const ScanProgress &progress)
{
    showText(
        u"%1 %2 of %3 tracks"_s.arg(progress.phase).arg(progress.processed).arg(progress.total));
}

void ProgressLine::show(const ExportProgress &progress)
{
    showText(u"%1 %2 of %3"_s.arg(progress.phase).arg(progress.written).arg(progress.total));
}

void ProgressLine::showText(const QString &text)
{
    if (!m_isTerminal)
        return;
    std::fprintf(stderr, "%s%s", wipe, text.toUtf8().constData());
    std::fflush(stderr);
    m_isShown = true;
}

void ProgressLine::clear()
{
    if (m_isShown)
        std::fprintf(stderr, "%s", wipe);
    m_isShown = false;
}

} // namespace tarnwick::cli
