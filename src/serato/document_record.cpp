#include "serato/document_record.h"

#include "foundation/utf16.h"
#include "serato/record_writer.h"
#include "serato/serato_parser.h"

#include <algorithm>

namespace tarnwick {

QString DocumentField::text() const
{
    return decodeUtf16BigEndian(payload);
}

void DocumentField::setText(const QString &text)
{
    payload = encodeUtf16BigEndian(text);
}

DocumentRecord DocumentRecord::fromBytes(QByteArrayView record)
{
    ByteReader reader(record);
    const auto whole = SeratoParser::takeField(reader);
    Q_ASSERT(whole);
    DocumentRecord result{whole->tag};
    if (!result.isTrack()) {
        result.opaque = whole->payload.toByteArray();
        return result;
    }
    QList<DocumentField> &fields = result.fields.emplace();
    SeratoParser::walk(whole->payload, [&](const SeratoParser::Field &field) {
        fields.append({field.tag, field.payload.toByteArray()});
    });
    return result;
}

QByteArray DocumentRecord::bytes() const
{
    QByteArray body = opaque.value_or(QByteArray());
    if (fields) {
        body.clear();
        for (const DocumentField &field : *fields)
            appendRecord(body, field.tag, field.payload);
    }
    QByteArray record;
    appendRecord(record, tag, body);
    return record;
}

const DocumentField *DocumentRecord::field(Tag fieldTag) const
{
    if (!fields)
        return nullptr;
    const auto found = std::find_if(fields->begin(), fields->end(), [=](const DocumentField &each) {
        return each.tag == fieldTag;
    });
    return found == fields->end() ? nullptr : &*found;
}

QString DocumentRecord::pfil() const
{
    const DocumentField *path = field("pfil"_tag);
    return path ? path->text() : QString();
}

} // namespace tarnwick
