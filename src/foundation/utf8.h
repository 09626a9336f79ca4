#pragma once

#include <QByteArrayView>
#include <QString>

namespace tarnwick {

/// Text of UTF-8, in which what is none becomes U+FFFD. A byte-order mark is a character like any
/// other, also at the start, where Qt's own conversion takes it for a mark and drops it.
QString decodeUtf8(QByteArrayView bytes);

} // namespace tarnwick
