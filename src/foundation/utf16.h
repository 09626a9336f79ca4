#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace tarnwick {

/// Text of UTF-16 code units, high byte first. An odd last byte is dropped; each unpaired surrogate
/// becomes U+FFFD; no byte-order mark is honoured or dropped; NUL characters stay.
QString decodeUtf16BigEndian(QByteArrayView bytes);
/// The same into memory for one unit of two bytes each.
void decodeUtf16BigEndian(QByteArrayView bytes, char16_t *out);

/// The reverse: two bytes a code unit, high byte first, no byte-order mark, no terminator.
QByteArray encodeUtf16BigEndian(QStringView text);

} // namespace tarnwick
