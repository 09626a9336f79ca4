#pragma once

#include "foundation/json_reader.h"
#include "foundation/json_writer.h"
#include "foundation/result.h"
#include "platform/shared_file.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <algorithm>
#include <functional>
#include <optional>

/// How the stores' files are written and read. Always as a whole: pretty-printed with two blanks of
/// indent, keys in ascending order, a line feed at the end, so that equal stores are equal bytes
/// and a person can read and compare them. The write is plain, not atomic, but no other process of
/// this program reads or writes meanwhile (`platform/shared_file.h`). A file that is not
/// exactly such JSON of the expected shape, for whatever reason, counts as a whole as not there,
/// and stays where it is until the next write.
namespace tarnwick::StoreFile {

/// An element's place in the file's one list: its text is indented by this many steps.
constexpr int elementDepth = 1;

/// Records of a list with the text of each as it stands in the file, so that a list of thousands is
/// written again without being encoded again.
template <typename Record>
struct Records
{
    QList<Record> records;
    QList<QByteArray> texts; ///< of the same order and number; may share the bytes of `file`
    QByteArray file;
    platform::FileState state; ///< of the file that it was read from, or that holds it
};

/// The text of one element: `write` gets a writer that stands where the element goes.
template <typename Record>
QByteArray encoded(const Record &record)
{
    QByteArray text;
    JsonWriter json = JsonWriter::within(text, elementDepth);
    record.write(json);
    return text;
}

/// Reads a list of records. `Record::read(json, record, hasWrittenForm)` reads one.
template <typename Record>
std::optional<Records<Record>> decoded(const QByteArray &file)
{
    Records<Record> list{{}, {}, file, {}};
    JsonReader json(file);
    const bool isList = json.array([&] {
        Record record;
        bool hasWrittenForm = false;
        const qsizetype start = json.valueStart();
        if (!Record::read(json, record, &hasWrittenForm))
            return false;
        const QByteArrayView text = json.bytesBetween(start, json.position());
        list.texts.append(hasWrittenForm ? QByteArray::fromRawData(text.data(), text.size())
                                         : encoded(record));
        list.records.append(std::move(record));
        return true;
    });
    if (!isList || !json.end())
        return std::nullopt;
    return list;
}

/// The whole file; empty if it can't be read, which no store's file is.
QByteArray read(const QString &path);
QByteArray read(const QString &path, platform::FileState &state);

/// A list of encoded elements as a file's bytes.
QByteArray listOf(const QList<QByteArray> &texts);

/// Reads and decodes; an empty list where either fails.
template <typename Record>
Records<Record> load(const QString &path)
{
    platform::FileState state;
    auto list = decoded<Record>(read(path, state)).value_or(Records<Record>());
    list.state = state;
    return list;
}

/// The place of the first record with the id; -1 where none has it.
template <typename Record>
qsizetype placeOf(const QList<Record> &records, const QString &id)
{
    const auto found = std::find_if(records.begin(), records.end(),
                                    [&](const Record &record) { return record.id == id; });
    return found == records.end() ? -1 : found - records.begin();
}

} // namespace tarnwick::StoreFile
