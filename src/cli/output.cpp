#include "cli/output.h"

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

constexpr qsizetype pieceSize = 1 << 18; // bytes

/// What switches a terminal to the colour of a tone.
QString colourCode(Tone tone)
{
    switch (tone) {
    case Tone::Good:
        return u"\033[32m"_s;
    case Tone::Warn:
        return u"\033[33m"_s;
    case Tone::Poor:
        return u"\033[31m"_s;
    case Tone::Faint:
        return u"\033[2m"_s;
    }
    return {};
}

} // namespace

QString Output::toned(Tone tone, const QString &text) const
{
    if (m_colours == Colours::No || text.isEmpty())
        return text;
    return colourCode(tone) + text + u"\033[0m"_s;
}

void Output::tellRest(qsizetype count)
{
    const qsizetype rest = count - shownRows(count);
    if (rest > 0)
        line(toned(Tone::Faint, u"… and %1 more (--all lists them)"_s.arg(rest)));
}

void Output::list(const TextTable &table)
{
    text(table.text(shownRows(table.rowCount())));
    tellRest(table.rowCount());
}

void Output::passOn()
{
    if (m_buffer.size() >= pieceSize)
        flush();
}

void Output::flush()
{
    const size_t size = size_t(m_buffer.size());
    const size_t written = std::fwrite(m_buffer.constData(), 1, size, m_stream);
    if (written != size || std::fflush(m_stream) != 0)
        m_isSound = false;
    m_buffer.resize(0); // keeps the room
}

} // namespace tarnwick::cli
