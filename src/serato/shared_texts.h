#pragma once

#include "foundation/packed_texts.h"

#include <QByteArrayView>

#include <array>
#include <vector>

namespace tarnwick {

/// Decodes the texts of one file and gives equal ones the same memory: a library repeats its
/// artists, genres, keys and tempos by the thousand. Remembers the latest text at each of a fixed
/// number of places, so that a lookup costs one comparison and the memory is bounded.
///
/// While it lives, its texts stay on its thread.
class SharedTexts
{
public:
    /// For a file of about so many records.
    explicit SharedTexts(quint64 records);

    /// Sets a text to that of a payload, see decodeUtf16BigEndian: now, or at the next `settle`,
    /// until when both must stay where they are. For the places are more than fit a processor's
    /// nearest cache, and are fetched meanwhile.
    void setShared(QString &text, QByteArrayView payload);
    /// Sets all texts that are still to be set, in the order of their calls.
    void settle();

    /// The text of a payload that hardly ever occurs twice: neither looked for nor remembered.
    QString own(QByteArrayView payload);

private:
    /// One line of the processor's cache, so that a lookup waits for memory once at most.
    struct alignas(64) Place
    {
        TextStock text;
        char start[64 - sizeof(TextStock)]; ///< of its payload
    };

    /// A text that waits for its place to be fetched.
    struct Waiting
    {
        QString *text;
        Place *place;
        QByteArrayView payload;
    };

    void remember(Place &place, QByteArrayView payload);
    static bool holds(const Place &place, QByteArrayView payload);

    PackedTexts m_packed;
    std::vector<Place> m_places;
    int m_shift; ///< from a hash to the number of its place
    std::array<Waiting, 16> m_waiting;
    size_t m_waitingCount = 0;
};

} // namespace tarnwick
