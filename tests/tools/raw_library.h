#pragma once

#include <QByteArray>
#include <QFile>
#include <QHash>
#include <QList>
#include <QString>

#include <utility>

/// A reader of Serato's records and of MPEG audio that shares no line with the program or with the
/// tool under test. It trusts nothing: whatever isn't whole makes `whole` false.
namespace raw {

struct Record
{
    QByteArray tag;
    QByteArray payload;
};

struct Records
{
    QList<Record> list;
    bool whole = true; ///< the last record ends where the bytes end

    QByteArray first(const QByteArray &tag) const
    {
        for (const Record &record : list) {
            if (record.tag == tag) {
                return record.payload;
            }
        }
        return {};
    }
};

inline quint32 number(const QByteArray &bytes, qsizetype at)
{
    quint32 value = 0;
    for (qsizetype i = at; i < at + 4 && i < bytes.size(); ++i) {
        value = value << 8 | static_cast<quint8>(bytes[i]);
    }
    return value;
}

inline Records records(const QByteArray &bytes)
{
    Records found;
    qsizetype at = 0;
    while (at + 8 <= bytes.size()) {
        const qsizetype length = number(bytes, at + 4);
        if (at + 8 + length > bytes.size()) {
            break;
        }
        found.list.append({bytes.mid(at, 4), bytes.mid(at + 8, length)});
        at += 8 + length;
    }
    found.whole = at == bytes.size();
    return found;
}

inline QString text(const QByteArray &payload)
{
    QString out;
    for (qsizetype i = 0; i + 1 < payload.size(); i += 2) {
        out.append(
            QChar(static_cast<quint8>(payload[i]) << 8 | static_cast<quint8>(payload[i + 1])));
    }
    return out;
}

inline QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Bytes of a leading ID3v2 tag, the header included; 0 without one.
inline qsizetype tagSize(const QByteArray &file)
{
    if (!file.startsWith("ID3")) {
        return 0;
    }
    qsizetype size = 0;
    for (int i = 6; i < 10; ++i) {
        size = size << 7 | (file[i] & 0x7F);
    }
    return size + 10;
}

/// Whether the frames of the tag follow one another up to its end or to padding of zeros alone.
inline bool framesFillTag(const QByteArray &tag)
{
    const bool syncsafe = tag[3] == 4;
    qsizetype at = 10;
    while (at + 10 <= tag.size() && tag[at] != 0) {
        quint32 size = number(tag, at + 4);
        if (syncsafe) {
            size = (size & 0x7F) | (size >> 1 & 0x3F80) | (size >> 2 & 0x1FC000) |
                   (size >> 3 & 0xFE00000);
        }
        at += 10 + qsizetype(size);
    }
    return at <= tag.size() && tag.mid(at).count('\0') == tag.size() - at;
}

/// The number of MPEG 1 Layer III frames that follow one another from `at` to the very end of the
/// file; -1 if they don't.
inline int mpegFrames(const QByteArray &file, qsizetype at)
{
    static constexpr int rates[] = {0,   32,  40,  48,  56,  64,  80,  96,
                                    112, 128, 160, 192, 224, 256, 320, 0};
    static constexpr int sampleRates[] = {44100, 48000, 32000, 0};
    int count = 0;
    while (at + 4 <= file.size()) {
        const quint32 header = number(file, at);
        const int rate = rates[header >> 12 & 15];
        const int sampleRate = sampleRates[header >> 10 & 3];
        if (header >> 17 != 0x7FFD || rate == 0 || sampleRate == 0) {
            return -1;
        }
        at += 144000 * rate / sampleRate + (header >> 9 & 1);
        ++count;
    }
    return at == file.size() ? count : -1;
}

} // namespace raw
