#pragma once

#include <QByteArray>
#include <QStringView>

namespace tarnwick::demo {

// This tool's own encoder of Serato's records: a tag of four characters, the length as four bytes,
// big-endian, the payload.

void appendRecord(QByteArray &out, const char *tag, const QByteArray &payload);
void appendTextRecord(QByteArray &out, const char *tag, QStringView text);
void appendNumberRecord(QByteArray &out, const char *tag, quint32 number);
void appendFlagRecord(QByteArray &out, const char *tag, bool flag);

/// A field of a history entry: numbered instead of tagged.
void appendNumberedField(QByteArray &out, quint32 number, const QByteArray &payload);

} // namespace tarnwick::demo
