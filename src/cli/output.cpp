#include "cli/output.h"

namespace tarnwick::cli {

namespace {

constexpr qsizetype pieceSize = 1 << 18; // bytes

} // namespace

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
