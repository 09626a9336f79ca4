#pragma once

#include "foundation/result.h"
#include "serato/document_record.h"

#include <QByteArrayList>

#include <optional>
#include <utility>
#include <vector>

namespace tarnwick {

/// A `database V2` that can be changed without touching what is not named: Serato's own records and
/// fields that nobody here understands survive every edit, byte for byte.
///
/// 1. A document is the image of its file and the place of every record in it. Reading copies no
///    payload, and only an edited record owns bytes of its own.
/// 2. What lies behind the first damage of the file, or of a track's record, is not part of it.
/// 3. Paths are given with or without a leading slash, and compared without: one is dropped on each
///    side. Where several tracks have a path, the first one counts.
/// 4. Nothing reaches the disk ahead of `write`. When it is allowed to write is not decided here.
///
/// A value: a copy is cheap and changes on its own.
class SeratoDocument
{
public:
    using Field = DocumentField;
    using Record = DocumentRecord;

    /// Fails only where the file can't be read.
    static Result<SeratoDocument> read(const QString &path);
    static SeratoDocument fromBytes(const QByteArray &image);

    /// The whole file as `write` would write it.
    QByteArray serialize() const;
    /// Puts the document in the place of a file, which at every moment is the old one or the new
    /// one; see platform::replaceFile.
    Done write(const QString &path) const;

    qsizetype recordCount() const { return qsizetype(m_records.size()); }
    Record record(qsizetype index) const { return Record::fromBytes(m_records[size_t(index)]); }

    /// The indices of the tracks, ascending.
    QList<qsizetype> trackIndices() const;
    std::optional<qsizetype> trackIndex(const QString &path) const;
    std::optional<Record> track(const QString &path) const;

    // Each of these answers false, and changes nothing, where no track has the path.

    /// Sets a text field: the first of its tag in place, else a new one at the end of the record.
    bool setText(const QString &path, Tag tag, const QString &value);
    /// Gives the track another path, taken as it stands, and clears its missing flag.
    bool relink(const QString &path, const QString &newPath);
    /// Gives the track its old path back and sets its missing flag, whatever it was before.
    bool revertRelink(const QString &currentPath, const QString &oldPath);
    bool removeTrack(const QString &path);

    /// Appends a track behind all records. False, without a change, for a record that is no track
    /// or whose path some track has; having no path counts as a path.
    bool insert(const Record &record);

private:
    using NewField = std::pair<Tag, QByteArray>;

    void append(QByteArrayView record);
    void setFields(size_t index, const std::vector<NewField> &fields);
    std::vector<QByteArrayView> parts() const;

    QByteArray m_image;
    QByteArrayList m_owned; ///< records that are not, or no longer, those of the image

    // Of each record its bytes, header included, in the image or in m_owned; and a hash of its
    // path.
    std::vector<QByteArrayView> m_records;
    std::vector<quint32> m_pathKeys;
};

} // namespace tarnwick
