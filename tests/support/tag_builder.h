#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace tarnwick::testing {

inline QByteArray zeros(qsizetype count)
{
    return QByteArray(count, '\0');
}

/// Four bytes of seven bits each, the highest first.
inline QByteArray syncsafeBytes(qint64 value)
{
    QByteArray bytes;
    for (const int shift : {21, 14, 7, 0})
        bytes.append(char((value >> shift) & 0x7F));
    return bytes;
}

inline QByteArray bigEndianBytes(qint64 value)
{
    QByteArray bytes;
    for (const int shift : {24, 16, 8, 0})
        bytes.append(char((value >> shift) & 0xFF));
    return bytes;
}

/// The payload of a general object with Latin-1 texts, as Serato writes them.
inline QByteArray objectPayload(const QByteArray &description, const QByteArray &data)
{
    return zeros(1) + "application/octet-stream" + zeros(1) + zeros(1) + description + zeros(1) +
           data;
}

/// The same with the description in UTF-16, as other programs write them.
inline QByteArray utf16ObjectPayload(const QByteArray &description, const QByteArray &data)
{
    QByteArray wide = "\xff\xfe";
    for (const char letter : description)
        wide.append(letter).append('\0');
    return "\x01" + QByteArray("application/octet-stream") + zeros(1) + "\xff\xfe" + zeros(2) +
           wide + zeros(2) + data;
}

inline QByteArray userTextPayload(const QByteArray &description, const QByteArray &value)
{
    return zeros(1) + description + zeros(1) + value;
}

/// An audio file with an ID3v2 tag, piece by piece.
class TagBuilder
{
public:
    explicit TagBuilder(int major = 3)
        : m_major(major)
    {}

    TagBuilder &frame(const QByteArray &id, const QByteArray &payload,
                      const QByteArray &flags = zeros(2))
    {
        m_frames += id + sizeBytes(payload.size()) + flags + payload;
        return *this;
    }
    TagBuilder &object(const QByteArray &description, const QByteArray &data = "cues")
    {
        return frame("GEOB", objectPayload(description, data));
    }
    TagBuilder &userText(const QByteArray &description, const QByteArray &value)
    {
        return frame("TXXX", userTextPayload(description, value));
    }
    /// Any bytes in the place of a frame.
    TagBuilder &raw(const QByteArray &bytes)
    {
        m_frames += bytes;
        return *this;
    }
    TagBuilder &padding(qsizetype count) { return raw(zeros(count)); }

    TagBuilder &revision(int revision)
    {
        m_revision = revision;
        return *this;
    }
    TagBuilder &flags(int flags)
    {
        m_flags = flags;
        return *this;
    }
    /// What the header says instead of the frames' true size.
    TagBuilder &statedSize(qint64 size)
    {
        m_statedSize = size;
        return *this;
    }
    TagBuilder &audio(const QByteArray &audio)
    {
        m_audio = audio;
        return *this;
    }

    QByteArray tag() const
    {
        const qint64 size = m_statedSize < 0 ? m_frames.size() : m_statedSize;
        return "ID3" + QByteArray(1, char(m_major)) + char(m_revision) + char(m_flags) +
               syncsafeBytes(size) + m_frames;
    }
    QByteArray file() const { return tag() + m_audio; }

private:
    QByteArray sizeBytes(qint64 size) const
    {
        return m_major == 4 ? syncsafeBytes(size) : bigEndianBytes(size);
    }

    int m_major;
    int m_revision = 0;
    int m_flags = 0;
    qint64 m_statedSize = -1;
    QByteArray m_frames;
    QByteArray m_audio = "audio";
};

} // namespace tarnwick::testing
