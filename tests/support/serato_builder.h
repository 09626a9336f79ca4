#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

/// Bytes of Serato's files, made by an encoder of the tests' own, so that a fault of the program's
/// encoder can't hide behind itself.
namespace tarnwick::testing {

/// The bytes of hexadecimal digits; blanks between them don't count.
inline QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

inline QByteArray bigEndian32(quint32 number)
{
    const char bytes[] = {char(number >> 24), char(number >> 16), char(number >> 8), char(number)};
    return QByteArray(bytes, sizeof bytes);
}

inline QByteArray utf16(QStringView text)
{
    QByteArray bytes;
    for (const QChar unit : text) {
        bytes.append(char(unit.unicode() >> 8));
        bytes.append(char(unit.unicode() & 0xFF));
    }
    return bytes;
}

/// Tag, length, payload. The tag may hold any four bytes.
inline QByteArray record(QByteArrayView tag, const QByteArray &payload = {})
{
    return tag.toByteArray() + bigEndian32(quint32(payload.size())) + payload;
}

inline QByteArray textRecord(QByteArrayView tag, QStringView text)
{
    return record(tag, utf16(text));
}

inline QByteArray numberRecord(QByteArrayView tag, quint32 number)
{
    return record(tag, bigEndian32(number));
}

inline QByteArray flagRecord(QByteArrayView tag, bool flag)
{
    return record(tag, QByteArray(1, char(flag)));
}

/// A track of a database, or an entry of a crate, that holds these fields.
inline QByteArray trackRecord(const QByteArrayList &fields)
{
    return record("otrk", fields.join());
}

inline QByteArray databaseVersion()
{
    return textRecord("vrsn", u"2.0/Serato Scratch LIVE Database");
}

inline QByteArray crateVersion()
{
    return textRecord("vrsn", u"1.0/Serato ScratchLive Crate");
}

inline QByteArray crateEntry(QStringView path)
{
    return trackRecord({textRecord("ptrk", path)});
}

} // namespace tarnwick::testing
