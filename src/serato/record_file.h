#pragma once

#include "platform/file_handle.h"
#include "serato/serato_parser.h"

namespace tarnwick {

/// Reads the records of a file one after another through one buffer, which grows to the largest
/// record and no further. Gives what `SeratoParser::walk` over the whole file would visit, without
/// holding the file in memory.
class RecordFile
{
public:
    /// Fails if there is no regular file that can be opened.
    static Result<RecordFile> open(const QString &path);

    /// The next record of that tag; its payload stands until the next call. Others are passed over,
    /// however large. Nothing at the end, and nothing from there on at the first record that is cut
    /// or has no ASCII tag. Fails if the disk does. Throws std::bad_alloc.
    Result<std::optional<SeratoParser::Field>> next(Tag wanted);

    /// Size of the file when it was opened, in bytes.
    quint64 size() const { return m_file.size(); }
    /// Bytes behind the last record given.
    quint64 rest() const { return quint64(buffered().size()) + m_unread; }

private:
    RecordFile(platform::FileHandle file, const QString &path);

    QByteArrayView buffered() const
    {
        return QByteArrayView(m_buffer).sliced(m_start, m_end - m_start);
    }
    Result<bool> reachNext(Tag wanted);
    quint64 sizeOfNext() const;
    Done fill(quint64 wanted);
    Done skip(quint64 count);

    platform::FileHandle m_file;
    QString m_path;
    QByteArray m_buffer;
    qsizetype m_start = 0; ///< of the next record in the buffer
    qsizetype m_end = 0;   ///< of what the buffer holds
    quint64 m_unread;      ///< bytes of the file that are still to be read
};

} // namespace tarnwick
