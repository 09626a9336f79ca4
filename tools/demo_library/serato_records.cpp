#include "serato_records.h"

#include "byte_writing.h"

namespace tarnwick::demo {

void appendRecord(QByteArray &out, const char *tag, const QByteArray &payload)
{
    out.append(tag, 4);
    appendBigEndian(out, static_cast<quint32>(payload.size()));
    out.append(payload);
}

void appendTextRecord(QByteArray &out, const char *tag, QStringView text)
{
    appendRecord(out, tag, utf16BigEndian(text));
}

void appendNumberRecord(QByteArray &out, const char *tag, quint32 number)
{
    QByteArray payload;
    appendBigEndian(payload, number);
    appendRecord(out, tag, payload);
}

void appendFlagRecord(QByteArray &out, const char *tag, bool flag)
{
    appendRecord(out, tag, QByteArray(1, flag ? '\1' : '\0'));
}

void appendNumberedField(QByteArray &out, quint32 number, const QByteArray &payload)
{
    appendBigEndian(out, number);
    appendBigEndian(out, static_cast<quint32>(payload.size()));
    out.append(payload);
}

} // namespace tarnwick::demo
