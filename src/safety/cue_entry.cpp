#include "safety/cue_entry.h"

#include "foundation/dates.h"
#include "foundation/json_record.h"
#include "foundation/json_writer.h"
#include "safety/store_file.h"
#include "tags/serato_geob.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// Stands for a text with escapes: no base64 has any, and that there is a value is all that counts.
constexpr QByteArrayView noBase64("!");

size_t indexOf(CueEntry::Frame frame)
{
    return size_t(frame);
}

void writeFrame(JsonWriter &json, QStringView key, const std::optional<QByteArray> &utf8)
{
    if (utf8)
        json.member(key, JsonReader::toText(*utf8));
}

/// The very bytes of `text` that hold a frame which was read from it, not copied out of it.
QByteArrayView shared(const std::optional<QByteArray> &frame, QByteArrayView text)
{
    if (!frame)
        return {};
    const bool isWithin = frame->constData() >= text.begin() && frame->constData() < text.end();
    return isWithin ? QByteArrayView(frame->constData(), frame->size()) : noBase64;
}

} // namespace

CueEntry::CueEntry(const SeratoGEOB::CueFrames &frames, const QDateTime &capturedAt,
                   quint64 fileSize)
    : m_capturedAt(wholeSeconds(capturedAt))
    , m_fileSize(fileSize)
{
    Texts texts;
    for (size_t i = 0; i < frameCount; ++i) {
        const auto found = frames.constFind(SeratoGEOB::cueDescriptors().at(qsizetype(i)));
        if (found != frames.constEnd())
            texts[i] = found->toBase64();
    }
    encode(texts);
}

std::optional<QByteArrayView> CueEntry::base64(Frame frame) const
{
    const QByteArrayView view = m_frames[indexOf(frame)];
    return view.isNull() ? std::nullopt : std::optional(view);
}

bool CueEntry::hasMarkers() const
{
    return base64(Frame::Markers2) || base64(Frame::MarkersLegacy);
}

bool CueEntry::hasGrid() const
{
    return base64(Frame::BeatGrid).has_value();
}

SeratoGEOB::CueFrames CueEntry::payloads() const
{
    SeratoGEOB::CueFrames frames;
    for (size_t i = 0; i < frameCount; ++i) {
        const QByteArrayView view = m_frames[i];
        if (view.isNull() || view.size() % 4 != 0)
            continue;
        const auto decoded =
            QByteArray::fromBase64Encoding(QByteArray::fromRawData(view.data(), view.size()),
                                           QByteArray::AbortOnBase64DecodingErrors);
        if (decoded)
            frames.insert(SeratoGEOB::cueDescriptors().at(qsizetype(i)), decoded.decoded);
    }
    return frames;
}

// The keys are frozen: they stand in the vaults of all users. In ascending order.

bool CueEntry::readFields(JsonReader &json, CueEntry &entry, Texts &frames, bool &hasWrittenForm)
{
    const JsonField fields[] = {
        {"beatGrid", &frames[indexOf(Frame::BeatGrid)]},
        {"capturedAt", &entry.m_capturedAt},
        {"fileSize", &entry.m_fileSize},
        {"markers2", &frames[indexOf(Frame::Markers2)]},
        {"markersLegacy", &frames[indexOf(Frame::MarkersLegacy)]},
    };
    return readRecord(json, fields, &hasWrittenForm);
}

void CueEntry::encode(const Texts &frames)
{
    m_bytes = {};
    JsonWriter json = JsonWriter::within(m_bytes, StoreFile::elementDepth);
    json.beginObject();
    writeFrame(json, u"beatGrid", frames[indexOf(Frame::BeatGrid)]);
    json.member(u"capturedAt", isoSeconds(m_capturedAt));
    json.member(u"fileSize", m_fileSize);
    writeFrame(json, u"markers2", frames[indexOf(Frame::Markers2)]);
    writeFrame(json, u"markersLegacy", frames[indexOf(Frame::MarkersLegacy)]);
    json.endObject();

    m_text = m_bytes;
    JsonReader own(m_text);
    Texts read;
    bool hasWrittenForm = false;
    readFields(own, *this, read, hasWrittenForm);
    for (size_t i = 0; i < frameCount; ++i)
        m_frames[i] = shared(read[i], m_text);
}

bool CueEntry::read(JsonReader &json, const QByteArray &file, CueEntry &entry)
{
    Texts frames;
    bool hasWrittenForm = false;
    const qsizetype start = json.valueStart();
    if (!readFields(json, entry, frames, hasWrittenForm))
        return false;
    if (!hasWrittenForm) {
        entry.encode(frames);
        return true;
    }
    entry.m_bytes = file;
    entry.m_text = json.bytesBetween(start, json.position());
    for (size_t i = 0; i < frameCount; ++i)
        entry.m_frames[i] = shared(frames[i], entry.m_text);
    return true;
}

bool CueEntry::operator==(const CueEntry &other) const
{
    for (const Frame frame : {Frame::Markers2, Frame::MarkersLegacy, Frame::BeatGrid}) {
        if (base64(frame) != other.base64(frame))
            return false;
    }
    return m_capturedAt == other.m_capturedAt && m_fileSize == other.m_fileSize;
}

} // namespace tarnwick
