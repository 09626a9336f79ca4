#pragma once

#include "serato/tag.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace tarnwick {

/// One field of a track's record, with bytes of its own.
struct DocumentField
{
    Tag tag;
    QByteArray payload;

    /// The payload as text; see decodeUtf16BigEndian.
    QString text() const;
    void setText(const QString &text);
    /// The first byte of the payload; 0 for an empty one.
    quint8 byte() const { return payload.isEmpty() ? 0 : quint8(payload.front()); }
    /// Makes the payload this one byte.
    void setByte(quint8 byte) { payload = QByteArray(1, char(byte)); }

    bool operator==(const DocumentField &) const = default;
};

/// One top-level record of a database. It has either fields, which makes it a track, or an opaque
/// payload.
struct DocumentRecord
{
    Tag tag;
    std::optional<QList<DocumentField>> fields = std::nullopt; ///< file order
    std::optional<QByteArray> opaque = std::nullopt;

    /// The record that such bytes, header included, hold; they must be a whole record.
    static DocumentRecord fromBytes(QByteArrayView record);
    /// The record as it stands in a file, header included.
    QByteArray bytes() const;

    bool isTrack() const { return tag == "otrk"_tag; }
    /// The first field of a tag; null if there is none.
    const DocumentField *field(Tag fieldTag) const;
    /// The path of the first `pfil` field as it stands; empty without one.
    QString pfil() const;

    bool operator==(const DocumentRecord &) const = default;
};

} // namespace tarnwick
