#pragma once

#include "foundation/utf16.h"

#include <QByteArray>
#include <QString>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// What a fuzzer calls with each input, and what the replay of the corpus calls as well.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace tarnwick::fuzzing {

/// Ends the process, so that the input is kept, where what must hold doesn't.
inline void require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

/// How often a target took an input for what it reads.
inline long inputsRead = 0;

/// Says that the input is one that the target reads. For targets that look no further at any other:
/// their seeds must all be read, so that a reader that refuses everything is noticed.
inline void noteRead()
{
    ++inputsRead;
}

/// The very bytes of the input: reading past their end is noticed.
inline QByteArrayView viewOf(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), qsizetype(size)};
}

/// Whether a byte-order mark stands anywhere but at the start: Qt's reader of JSON drops it where a
/// text begins with it.
inline bool holdsInnerMark(QByteArrayView bytes)
{
    return bytes.indexOf(QByteArrayView("\xEF\xBB\xBF"), 1) >= 0;
}

/// An input that is taken apart piece by piece. Once it is used up it gives zeros and nothing.
class Pieces
{
public:
    explicit Pieces(QByteArrayView input)
        : m_rest(input)
    {}

    bool isEmpty() const { return m_rest.isEmpty(); }
    QByteArrayView rest() const { return m_rest; }

    quint8 byte()
    {
        const QByteArrayView taken = take(1);
        return taken.isEmpty() ? quint8(0) : quint8(taken.front());
    }
    int below(int bound) { return byte() % bound; }

    /// As many bytes as one byte tells.
    QByteArray bytes() { return take(byte()).toByteArray(); }
    /// Of such bytes, as UTF-16: without half a surrogate pair.
    QString text() { return decodeUtf16BigEndian(bytes()); }
    /// Text of few characters beyond ASCII, as most texts are.
    QString utf8() { return QString::fromUtf8(bytes()); }

private:
    QByteArrayView take(qsizetype count)
    {
        const QByteArrayView taken = m_rest.first(std::min(count, m_rest.size()));
        m_rest = m_rest.sliced(taken.size());
        return taken;
    }

    QByteArrayView m_rest;
};

} // namespace tarnwick::fuzzing
