#pragma once

#include <QByteArrayView>
#include <QString>

#include <vector>

namespace tarnwick {

/// Decodes the texts of one file and gives equal ones the same memory: a library repeats its
/// artists, genres, keys and tempos by the thousand. Remembers the latest text at each of a fixed
/// number of places, so that a lookup costs one comparison and the memory is bounded.
class SharedTexts
{
public:
    SharedTexts();

    /// The text of such a payload, until the next call; see decodeUtf16BigEndian.
    const QString &text(QByteArrayView payload);

private:
    std::vector<QString> m_places;
};

} // namespace tarnwick
