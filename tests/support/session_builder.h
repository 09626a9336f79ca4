#pragma once

#include "support/serato_builder.h"

namespace tarnwick::testing {

/// A play in a session file: its numbered fields in one entry.
inline QByteArray playEntry(QStringView path, QStringView title, QStringView artist,
                            quint32 secondsSince1970 = 0)
{
    const auto numbered = [](quint32 number, const QByteArray &payload) {
        return bigEndian32(number) + bigEndian32(quint32(payload.size())) + payload;
    };
    return record("oent", record("adat", numbered(2, utf16(path)) + numbered(6, utf16(title)) +
                                             numbered(7, utf16(artist)) +
                                             numbered(28, bigEndian32(secondsSince1970))));
}

} // namespace tarnwick::testing
