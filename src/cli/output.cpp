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
    std::fwrite(m_buffer.constData(), 1, size_t(m_buffer.size()), m_stream);
    std::fflush(m_stream);
    m_buffer.resize(0); // keeps the room
}

} // namespace tarnwick::cli
