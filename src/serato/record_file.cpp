#include "serato/record_file.h"

#include "platform/files.h"

#include <algorithm>
#include <cstring>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr quint64 usualBufferSize = quint64(256) * 1024; // stays in the processor's cache

} // namespace

using SeratoParser::Field;
using SeratoParser::headerSize;

Result<RecordFile> RecordFile::open(const QString &path)
{
    auto file = platform::FileHandle::openForReading(path);
    if (!file)
        return tl::unexpected(platform::describeFailure(path, u"opened"_s, file.error()));
    return RecordFile(std::move(*file), path);
}

RecordFile::RecordFile(platform::FileHandle file, const QString &path)
    : m_file(std::move(file))
    , m_path(path)
    , m_buffer(qsizetype(std::min(m_file.size(), usualBufferSize)), Qt::Uninitialized)
    , m_unread(m_file.size())
{}

Result<std::optional<Field>> RecordFile::next(Tag wanted)
{
    for (;;) {
        ByteReader reader(buffered());
        if (const std::optional<Field> field = SeratoParser::takeField(reader)) {
            m_start += reader.position();
            if (field->tag == wanted)
                return field;
            continue;
        }
        const Result<bool> more = reachNext(wanted);
        if (!more)
            return tl::unexpected(more.error());
        if (!*more)
            return std::nullopt;
    }
}

/// Brings the next record into the buffer, its header where that isn't there yet, or goes past it
/// where it isn't wanted. False where no whole record begins.
Result<bool> RecordFile::reachNext(Tag wanted)
{
    quint64 size = headerSize;
    bool isWanted = true;
    if (buffered().size() >= headerSize) {
        const std::optional<Tag> tag = Tag::at(buffered().data());
        if (!tag)
            return false;
        size = sizeOfNext();
        isWanted = *tag == wanted;
    }
    if (size > rest())
        return false;
    const Done done = isWanted ? fill(size) : skip(size);
    if (!done)
        return tl::unexpected(done.error());
    return true;
}

/// Of the record whose header is in the buffer.
quint64 RecordFile::sizeOfNext() const
{
    return headerSize + quint64(qFromBigEndian<quint32>(buffered().data() + Tag::size));
}

/// Goes past what is buffered, and on.
Done RecordFile::skip(quint64 count)
{
    const quint64 further = count - quint64(buffered().size());
    m_start = m_end;
    if (const auto skipped = m_file.skip(further); !skipped)
        return tl::unexpected(platform::describeFailure(m_path, u"read"_s, skipped.error()));
    m_unread -= further;
    return {};
}

/// Brings at least `wanted` bytes into the buffer, fewer only if the file has become shorter.
Done RecordFile::fill(quint64 wanted)
{
    const QByteArrayView kept = buffered();
    if (wanted > quint64(m_buffer.size())) {
        QByteArray larger(qsizetype(wanted), Qt::Uninitialized);
        std::copy(kept.begin(), kept.end(), larger.begin());
        m_buffer = std::move(larger);
    } else {
        std::memmove(m_buffer.data(), kept.data(), size_t(kept.size()));
    }
    m_end = kept.size();
    m_start = 0;
    const qsizetype least = qsizetype(wanted) - m_end;
    const qsizetype room = qsizetype(std::min(quint64(m_buffer.size() - m_end), m_unread));
    const auto count = m_file.readAtLeast(m_buffer.data() + m_end, least, room);
    if (!count)
        return tl::unexpected(platform::describeFailure(m_path, u"read"_s, count.error()));
    m_end += *count;
    m_unread = *count < least ? 0 : m_unread - quint64(*count);
    return {};
}

} // namespace tarnwick
