#include "serato/serato_document.h"

#include "foundation/paths.h"
#include "foundation/utf16.h"
#include "platform/files.h"
#include "platform/files_write.h"
#include "serato/record_writer.h"
#include "serato/serato_parser.h"

#include <QHash>

#include <algorithm>

namespace tarnwick {

namespace {

constexpr Tag trackTag = "otrk"_tag;
constexpr Tag pathTag = "pfil"_tag;
constexpr Tag missingTag = "bmis"_tag;

/// A guess at the bytes that a track takes.
constexpr qsizetype usualRecordSize = 512;

using SeratoParser::headerSize;

bool isTrackRecord(QByteArrayView record)
{
    return Tag::at(record.data()) == trackTag;
}

/// What a walk over a track's payload tells of it.
struct TrackFacts
{
    QByteArrayView path;  ///< payload of the first path field
    qsizetype walked = 0; ///< bytes up to the end of the last whole field
};

TrackFacts factsOf(QByteArrayView payload)
{
    TrackFacts facts;
    bool found = false;
    facts.walked = SeratoParser::walk(payload, [&](const SeratoParser::Field &field) {
        if (field.tag == pathTag && !found) {
            facts.path = field.payload;
            found = true;
        }
    });
    return facts;
}

QString normalizedPath(QByteArrayView payload)
{
    return withoutLeadingSlash(decodeUtf16BigEndian(payload));
}

bool holdsSurrogate(QByteArrayView payload)
{
    for (qsizetype i = 0; i + 1 < payload.size(); i += 2) {
        if ((uchar(payload[i]) & 0xF8) == 0xD8)
            return true;
    }
    return false;
}

quint32 hashOfPath(QByteArrayView bytes)
{
    if (bytes.startsWith(QByteArrayView("\0/", 2)))
        bytes = bytes.sliced(2);
    return quint32(qHashBits(bytes.data(), size_t(bytes.size())));
}

/// A hash that is equal for equal normalized paths, of the bytes as far as they stand for
/// themselves.
quint32 keyOfPath(QByteArrayView payload)
{
    if (holdsSurrogate(payload))
        return hashOfPath(encodeUtf16BigEndian(decodeUtf16BigEndian(payload)));
    return hashOfPath(payload.first(payload.size() & ~qsizetype(1)));
}

QByteArrayView pathPayloadOf(QByteArrayView track)
{
    return factsOf(track.sliced(headerSize)).path;
}

} // namespace

Result<SeratoDocument> SeratoDocument::read(const QString &path)
{
    const Result<QByteArray> image = platform::readFile(path);
    if (!image)
        return tl::unexpected(image.error());
    return fromBytes(*image);
}

SeratoDocument SeratoDocument::fromBytes(const QByteArray &image)
{
    SeratoDocument document;
    document.m_image = image;
    document.m_records.reserve(size_t(image.size() / usualRecordSize));
    document.m_pathKeys.reserve(size_t(image.size() / usualRecordSize));
    SeratoParser::walk(document.m_image, [&](const SeratoParser::Field &field) {
        document.append({field.payload.data() - headerSize, field.payload.size() + headerSize});
    });
    return document;
}

/// Adds a record whose bytes stay in place. Of a damaged track only the sound part is kept.
void SeratoDocument::append(QByteArrayView record)
{
    quint32 key = 0;
    if (isTrackRecord(record)) {
        const QByteArrayView payload = record.sliced(headerSize);
        const TrackFacts facts = factsOf(payload);
        key = keyOfPath(facts.path);
        if (facts.walked < payload.size()) {
            QByteArray sound;
            appendRecord(sound, trackTag, payload.first(facts.walked));
            m_owned.append(sound);
            record = m_owned.constLast();
        }
    }
    m_records.push_back(record);
    m_pathKeys.push_back(key);
}

/// The document in as few pieces as can be: neighbours of the image are one.
std::vector<QByteArrayView> SeratoDocument::parts() const
{
    std::vector<QByteArrayView> parts;
    for (const QByteArrayView record : m_records) {
        if (!parts.empty() && parts.back().data() + parts.back().size() == record.data())
            parts.back() = {parts.back().data(), parts.back().size() + record.size()};
        else
            parts.push_back(record);
    }
    return parts;
}

QByteArray SeratoDocument::serialize() const
{
    qsizetype size = 0;
    for (const QByteArrayView record : m_records)
        size += record.size();
    QByteArray bytes;
    bytes.reserve(size);
    for (const QByteArrayView part : parts())
        bytes.append(part.data(), part.size());
    return bytes;
}

Done SeratoDocument::write(const QString &path) const
{
    return platform::replaceFile(path, parts());
}

QList<qsizetype> SeratoDocument::trackIndices() const
{
    QList<qsizetype> indices;
    for (qsizetype i = 0; i < recordCount(); ++i) {
        if (isTrackRecord(m_records[size_t(i)]))
            indices.append(i);
    }
    return indices;
}

std::optional<qsizetype> SeratoDocument::trackIndex(const QString &path) const
{
    const QString wanted = withoutLeadingSlash(path);
    const quint32 key = keyOfPath(encodeUtf16BigEndian(path));
    for (auto at = std::find(m_pathKeys.begin(), m_pathKeys.end(), key); at != m_pathKeys.end();
         at = std::find(at + 1, m_pathKeys.end(), key)) {
        const qsizetype index = at - m_pathKeys.begin();
        const QByteArrayView record = m_records[size_t(index)];
        if (isTrackRecord(record) && normalizedPath(pathPayloadOf(record)) == wanted)
            return index;
    }
    return std::nullopt;
}

std::optional<SeratoDocument::Record> SeratoDocument::track(const QString &path) const
{
    const std::optional<qsizetype> index = trackIndex(path);
    return index ? std::optional(record(*index)) : std::nullopt;
}

/// Rebuilds one track with these fields set, in their order.
void SeratoDocument::setFields(size_t index, const std::vector<NewField> &fields)
{
    std::vector<bool> placed(fields.size(), false);
    QByteArray body;
    SeratoParser::walk(m_records[index].sliced(headerSize), [&](const SeratoParser::Field &old) {
        QByteArrayView payload = old.payload;
        for (size_t i = 0; i < fields.size(); ++i) {
            if (fields[i].first == old.tag && !placed[i]) {
                payload = fields[i].second;
                placed[i] = true;
            }
        }
        appendRecord(body, old.tag, payload);
    });
    for (size_t i = 0; i < fields.size(); ++i) {
        if (!placed[i])
            appendRecord(body, fields[i].first, fields[i].second);
    }
    QByteArray record;
    appendRecord(record, trackTag, body);
    m_owned.append(record);
    m_records[index] = m_owned.constLast();
    m_pathKeys[index] = keyOfPath(pathPayloadOf(m_records[index]));
}

bool SeratoDocument::setText(const QString &path, Tag tag, const QString &value)
{
    const std::optional<qsizetype> index = trackIndex(path);
    if (index)
        setFields(size_t(*index), {{tag, encodeUtf16BigEndian(value)}});
    return index.has_value();
}

bool SeratoDocument::relink(const QString &path, const QString &newPath)
{
    const std::optional<qsizetype> index = trackIndex(path);
    if (index)
        setFields(size_t(*index),
                  {{pathTag, encodeUtf16BigEndian(newPath)}, {missingTag, QByteArray(1, '\0')}});
    return index.has_value();
}

bool SeratoDocument::revertRelink(const QString &currentPath, const QString &oldPath)
{
    const std::optional<qsizetype> index = trackIndex(currentPath);
    if (index)
        setFields(size_t(*index),
                  {{pathTag, encodeUtf16BigEndian(oldPath)}, {missingTag, QByteArray(1, '\1')}});
    return index.has_value();
}

bool SeratoDocument::removeTrack(const QString &path)
{
    const std::optional<qsizetype> index = trackIndex(path);
    if (index) {
        m_records.erase(m_records.begin() + *index);
        m_pathKeys.erase(m_pathKeys.begin() + *index);
    }
    return index.has_value();
}

bool SeratoDocument::insert(const Record &record)
{
    if (!record.isTrack() || trackIndex(record.pfil()))
        return false;
    m_owned.append(record.bytes());
    append(m_owned.constLast());
    return true;
}

} // namespace tarnwick
