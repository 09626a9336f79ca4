// Edits of a database, beside a plain list of its records that is changed by hand: nothing is
// touched but what is named.

#include "fuzz_input.h"
#include "plain_records.h"
#include "serato/record_writer.h"
#include "serato/serato_document.h"

#include <optional>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

struct Field
{
    Tag tag;
    QByteArray payload;
};

/// A track's fields, or the bytes of any other record.
struct Record
{
    bool isTrack = false;
    QList<Field> fields = {};
    QByteArray other = {};
};

using Records = QList<Record>;

QString withoutSlash(const QString &path)
{
    return path.startsWith(u'/') ? path.sliced(1) : path;
}

Field *fieldOf(Record &record, Tag tag)
{
    for (Field &field : record.fields) {
        if (field.tag == tag)
            return &field;
    }
    return nullptr;
}

QString pathOf(Record record)
{
    const Field *field = fieldOf(record, "pfil"_tag);
    return field ? decodeUtf16BigEndian(field->payload) : QString();
}

void set(Record &record, Tag tag, const QByteArray &payload)
{
    if (Field *field = fieldOf(record, tag))
        field->payload = payload;
    else
        record.fields.append({tag, payload});
}

QByteArray bytesOf(const Record &record)
{
    if (!record.isTrack)
        return record.other;
    QByteArray fields;
    for (const Field &field : record.fields)
        appendRecord(fields, field.tag, field.payload);
    QByteArray bytes;
    appendRecord(bytes, "otrk"_tag, fields);
    return bytes;
}

QByteArray bytesOf(const Records &records)
{
    QByteArray bytes;
    for (const Record &record : records)
        bytes += bytesOf(record);
    return bytes;
}

Records recordsIn(QByteArrayView bytes)
{
    Records records;
    for (const PlainRecord &each : plainRecordsIn(bytes)) {
        Record record{each.tag() == QByteArrayView("otrk")};
        if (!record.isTrack)
            record.other = each.whole.toByteArray();
        else
            for (const PlainRecord &field : plainRecordsIn(each.payload()))
                record.fields.append({*Tag::at(field.tag().data()), field.payload().toByteArray()});
        records.append(record);
    }
    return records;
}

std::optional<qsizetype> indexOf(const Records &records, const QString &path)
{
    for (qsizetype i = 0; i < records.size(); ++i) {
        if (records.at(i).isTrack && withoutSlash(pathOf(records.at(i))) == withoutSlash(path))
            return i;
    }
    return std::nullopt;
}

/// Some track's path, or any other.
QString choosePath(Pieces &pieces, const Records &records)
{
    const int choice = pieces.byte();
    if (choice % 4 == 0 || records.isEmpty())
        return pieces.utf8();
    const QString path = pathOf(records.at(choice % records.size()));
    return choice % 4 == 1 ? u'/' + path : path;
}

Tag chooseTag(Pieces &pieces)
{
    constexpr Tag tags[] = {"tgen"_tag, "tsng"_tag, "pfil"_tag, "bmis"_tag, "zzzz"_tag};
    return tags[pieces.below(5)];
}

void setBoth(SeratoDocument &document, Records &records, Pieces &pieces, const QString &path)
{
    const auto index = indexOf(records, path);
    const Tag tag = chooseTag(pieces);
    const QString text = pieces.text();
    if (index)
        set(records[*index], tag, encodeUtf16BigEndian(text));
    require(document.setText(path, tag, text) == index.has_value(), "whether it was set");
}

void moveBoth(SeratoDocument &document, Records &records, Pieces &pieces, const QString &path)
{
    const auto index = indexOf(records, path);
    const bool isBack = pieces.below(2) == 1;
    const QString newPath = pieces.text();
    if (index) {
        set(records[*index], "pfil"_tag, encodeUtf16BigEndian(newPath));
        set(records[*index], "bmis"_tag, QByteArray(1, char(isBack)));
    }
    const bool done =
        isBack ? document.revertRelink(path, newPath) : document.relink(path, newPath);
    require(done == index.has_value(), "whether it was linked");
}

void removeBoth(SeratoDocument &document, Records &records, const QString &path)
{
    const auto index = indexOf(records, path);
    if (index)
        records.removeAt(*index);
    require(document.removeTrack(path) == index.has_value(), "whether it was removed");
}

void insertBoth(SeratoDocument &document, Records &records, const QString &path)
{
    Record record{true, {{"zzzz"_tag, "kept"}, {"pfil"_tag, encodeUtf16BigEndian(path)}}};
    const bool isNew = !indexOf(records, path);
    if (isNew)
        records.append(record);
    require(document.insert(DocumentRecord::fromBytes(bytesOf(record))) == isNew,
            "whether it was inserted");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Pieces input(viewOf(data, size));
    const QByteArray script = input.bytes();
    Records records = recordsIn(input.rest());
    SeratoDocument document = SeratoDocument::fromBytes(input.rest().toByteArray());
    for (Pieces pieces(script); !pieces.isEmpty();) {
        const int edit = pieces.below(4);
        const QString path = choosePath(pieces, records);
        switch (edit) {
        case 0:
            setBoth(document, records, pieces, path);
            break;
        case 1:
            moveBoth(document, records, pieces, path);
            break;
        case 2:
            removeBoth(document, records, path);
            break;
        default:
            insertBoth(document, records, path);
            break;
        }
        require(document.serialize() == bytesOf(records), "nothing else is touched");
    }
    return 0;
}
