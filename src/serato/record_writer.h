#pragma once

#include "serato/tag.h"

#include <QByteArray>
#include <QStringView>

namespace tarnwick {

/// Appends a record: tag, length, payload. A payload of 4 GiB and more, which no length can state,
/// ends the process, since what would be written could not be read again.
void appendRecord(QByteArray &out, Tag tag, QByteArrayView payload);

/// Appends a record that holds a text; see encodeUtf16BigEndian.
void appendTextRecord(QByteArray &out, Tag tag, QStringView text);

} // namespace tarnwick
