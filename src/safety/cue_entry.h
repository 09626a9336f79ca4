#pragma once

#include "foundation/json_reader.h"
#include "tags/geob_files.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QDateTime>

#include <array>
#include <optional>

namespace tarnwick {

/// The cue points and the beat grid of one audio file, as they stood at one time. Immutable.
///
/// Keeps the text of its JSON object, and of that the frames in base64: a vault of thousands is
/// written again without being encoded again, and the frames are decoded only when they are put
/// back into a file. Copies share the bytes.
class CueEntry
{
public:
    /// The frames that an entry can hold, in the order of `SeratoGEOB::cueDescriptors`.
    enum class Frame { Markers2, MarkersLegacy, BeatGrid };

    CueEntry() = default;
    /// Takes those of the frames that are there. The date loses its fraction of a second.
    CueEntry(const SeratoGEOB::CueFrames &frames, const QDateTime &capturedAt, quint64 fileSize);

    /// Base64; nothing where the entry holds no such frame. Valid as long as a copy of this entry
    /// lives. A text that no base64 can be is given as some other text that none can be.
    std::optional<QByteArrayView> base64(Frame frame) const;
    bool hasMarkers() const;
    bool hasGrid() const;
    const QDateTime &capturedAt() const { return m_capturedAt; } ///< UTC
    quint64 fileSize() const { return m_fileSize; } ///< bytes of the whole audio file at that time

    /// The frames in the form in which they are put back. One that doesn't decode is left out.
    SeratoGEOB::CueFrames payloads() const;

    /// The entry's text in the vault's file. Valid as long as a copy of this entry lives.
    QByteArrayView text() const { return m_text; }
    /// Reads the object at which the reader stands, whose bytes are those of `file`, and shares
    /// them where they are of the form that this program writes.
    static bool read(JsonReader &json, const QByteArray &file, CueEntry &entry);

    /// True for the same frames, date and size.
    bool operator==(const CueEntry &other) const;

private:
    static constexpr size_t frameCount = 3;
    using Texts = std::array<std::optional<QByteArray>, frameCount>;

    static bool readFields(JsonReader &json, CueEntry &entry, Texts &frames, bool &hasWrittenForm);
    void encode(const Texts &frames);

    QByteArray m_bytes;                              ///< keeps alive what the views below lie in
    QByteArrayView m_text;                           ///< the whole object
    std::array<QByteArrayView, frameCount> m_frames; ///< null where there is none
    QDateTime m_capturedAt;
    quint64 m_fileSize = 0;
};

} // namespace tarnwick
