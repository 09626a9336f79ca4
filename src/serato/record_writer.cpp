#include "serato/record_writer.h"

#include "foundation/utf16.h"

#include <QtEndian>

#include <limits>

namespace tarnwick {

namespace {

void appendBigEndian(QByteArray &out, quint32 number)
{
    char bytes[sizeof number];
    qToBigEndian(number, bytes);
    out.append(bytes, sizeof bytes);
}

} // namespace

void appendRecord(QByteArray &out, Tag tag, QByteArrayView payload)
{
    if (quint64(payload.size()) > std::numeric_limits<quint32>::max())
        qFatal("a record of %lld bytes can't be written", qlonglong(payload.size()));
    appendBigEndian(out, tag.code());
    appendBigEndian(out, quint32(payload.size()));
    out.append(payload.data(), payload.size());
}

void appendTextRecord(QByteArray &out, Tag tag, QStringView text)
{
    appendRecord(out, tag, encodeUtf16BigEndian(text));
}

} // namespace tarnwick
