#pragma once

#include <QByteArrayView>
#include <QString>

#include <vector>

namespace tarnwick {

/// Decodes the texts of one file and gives equal ones the same memory: a library repeats its
/// artists, genres, keys and tempos by the thousand. Remembers the latest text at each of a fixed
/// number of places, so that a lookup costs one comparison and the memory is bounded. The bytes
/// given must outlive it.
class SharedTexts
{
public:
    SharedTexts();

    /// The text of such a payload; see decodeUtf16BigEndian.
    QString text(QByteArrayView payload);

private:
    struct Slot
    {
        QByteArrayView payload;
        QString text;
    };

    std::vector<Slot> m_slots;
};

} // namespace tarnwick
