#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

/// Records taken apart by plain arithmetic, beside which the program's own walk is held.
namespace tarnwick::fuzzing {

struct PlainRecord
{
    QByteArrayView whole; ///< header included

    QByteArrayView tag() const { return whole.first(4); }
    QByteArrayView payload() const { return whole.sliced(8); }
};

/// The records up to the first that is cut or whose tag is not ASCII.
inline QList<PlainRecord> plainRecordsIn(QByteArrayView bytes)
{
    QList<PlainRecord> records;
    quint64 at = 0;
    const quint64 size = quint64(bytes.size());
    while (at + 8 <= size) {
        quint64 length = 0;
        bool isAscii = true;
        for (quint64 i = at; i < at + 4; ++i) {
            isAscii = isAscii && uchar(bytes[qsizetype(i)]) < 0x80;
            length = length * 256 + uchar(bytes[qsizetype(i + 4)]);
        }
        if (!isAscii || length > size - at - 8)
            break;
        records.append({bytes.sliced(qsizetype(at), qsizetype(8 + length))});
        at += 8 + length;
    }
    return records;
}

inline qsizetype sizeOf(const QList<PlainRecord> &records)
{
    qsizetype size = 0;
    for (const PlainRecord &each : records)
        size += each.whole.size();
    return size;
}

} // namespace tarnwick::fuzzing
