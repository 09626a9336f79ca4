#include "id3_writer.h"

#include "byte_writing.h"

#include <algorithm>

namespace tarnwick::demo {

namespace {

enum Encoding : char { Latin1 = 0, Utf16 = 1, Utf8 = 3 };

/// Four bytes of seven bits each.
quint32 syncsafe(qsizetype value)
{
    const auto bits = static_cast<quint32>(value);
    return (bits & 0x7F) | (bits & 0x3F80) << 1 | (bits & 0x1FC000) << 2 | (bits & 0xFE00000) << 3;
}

Encoding encodingFor(TagForm form, const QString &text)
{
    if (form == TagForm::V24) {
        return Utf8;
    }
    const bool narrow = std::ranges::all_of(text, [](QChar unit) { return unit.unicode() < 256; });
    return narrow ? Latin1 : Utf16;
}

QByteArray encoded(Encoding encoding, const QString &text)
{
    switch (encoding) {
    case Utf8:
        return text.toUtf8();
    case Latin1:
        return text.toLatin1();
    case Utf16:
        break;
    }
    QByteArray out("\xFF\xFE");
    for (const QChar unit : text) {
        appendLittleEndian<quint16>(out, unit.unicode());
    }
    return out;
}

QByteArray zeroTerminated(const QByteArray &text)
{
    return text + '\0';
}

} // namespace

void Id3Writer::addFrame(const char *id, const QByteArray &payload)
{
    m_frames.append(id, 4);
    appendBigEndian(m_frames, m_form == TagForm::V24 ? syncsafe(payload.size())
                                                     : static_cast<quint32>(payload.size()));
    m_frames.append(2, '\0');
    m_frames.append(payload);
}

void Id3Writer::addText(const char *id, const QString &text)
{
    if (!text.isEmpty()) {
        const Encoding encoding = encodingFor(m_form, text);
        addFrame(id, QByteArray(1, encoding) + encoded(encoding, text));
    }
}

void Id3Writer::addUserText(const QByteArray &description, const QByteArray &value)
{
    addFrame("TXXX", QByteArray(1, Latin1) + zeroTerminated(description) + value);
}

void Id3Writer::addComment(const QString &text)
{
    if (text.isEmpty()) {
        return;
    }
    const Encoding encoding = encodingFor(m_form, text);
    const QByteArray noDescription =
        encoding == Utf16 ? QByteArray("\xFF\xFE\0\0", 4) : QByteArray(1, '\0');
    addFrame("COMM", QByteArray(1, encoding) + "eng" + noDescription + encoded(encoding, text));
}

void Id3Writer::addObject(const QByteArray &description, const QByteArray &data)
{
    addFrame("GEOB", QByteArray(1, Latin1) + zeroTerminated("application/octet-stream") +
                         zeroTerminated({}) + zeroTerminated(description) + data);
}

void Id3Writer::addPicture(const QByteArray &png)
{
    constexpr char frontCover = 3;
    addFrame("APIC", QByteArray(1, Latin1) + zeroTerminated("image/png") +
                         QByteArray(1, frontCover) + zeroTerminated({}) + png);
}

QByteArray Id3Writer::tag(qsizetype padding) const
{
    QByteArray out("ID3");
    out.append(m_form == TagForm::V24 ? '\4' : '\3');
    out.append(2, '\0'); // revision, flags
    appendBigEndian(out, syncsafe(m_frames.size() + padding));
    out.append(m_frames);
    out.append(padding, '\0');
    return out;
}

} // namespace tarnwick::demo
