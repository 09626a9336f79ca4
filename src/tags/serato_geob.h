#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <vector>

/// A small reader and writer of the ID3v2 tag at the start of an audio file. Splits the file into
/// the tag's frames and the untouched bytes behind the tag, and joins them again. Frames stay
/// opaque; only the description of a general object is ever looked into. See
/// docs/formats/id3v2.md and docs/formats/serato-frames.md.
///
/// Does not look at the disk: what changes files stands in geob_files.h.
namespace tarnwick::SeratoGEOB {

/// One frame of a tag.
struct Frame
{
    QString id; ///< four characters, each a byte of the file
    std::array<quint8, 2> flags{};
    QByteArray payload; ///< all behind the frame's header

    /// The description of a general object ("GEOB"), possibly empty; nothing for any other frame
    /// and for an object whose three texts are not all there. Read as Latin-1, whatever the
    /// object's encoding byte says.
    std::optional<QString> geobDescriptor() const;

    bool operator==(const Frame &) const = default;
};

/// A whole audio file.
struct Tag
{
    quint8 major = 3;          ///< the version byte: 3 for ID3v2.3, 4 for ID3v2.4
    std::vector<Frame> frames; ///< file order
    QByteArray audio;          ///< every byte behind the tag

    bool operator==(const Tag &) const = default;
};

/// What a general object with cue points or a beat grid is called.
const QStringList &cueDescriptors();

/// True for a general object whose description is exactly one of `cueDescriptors`.
bool isCueFrame(const Frame &frame);

/// Takes a whole file, or at least its tag. Nothing if there is no tag at the start, if it is
/// unsynchronised or has an extended header, or if it runs past the end. A frame that runs past the
/// tag's end, all behind it, and padding are left out. Moved-in bytes become the `audio` without
/// being copied.
std::optional<Tag> readTag(QByteArray bytes);

/// The tag alone, without the audio: header and frames, no padding, revision and flags zero. A size
/// of 2^28 bytes and more loses its high bits.
QByteArray serializeTagAlone(const Tag &tag);

/// The whole file: the tag, then the audio.
QByteArray serialize(const Tag &tag);

} // namespace tarnwick::SeratoGEOB
