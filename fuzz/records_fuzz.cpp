// The walk over records, their fields, and records written again.

#include "fuzz_input.h"
#include "plain_records.h"
#include "serato/record_writer.h"
#include "serato/serato_parser.h"

using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

/// Big-endian; the last eight bytes of a longer payload.
quint64 plainNumber(QByteArrayView payload)
{
    quint64 number = 0;
    for (const char byte : payload.last(std::min<qsizetype>(payload.size(), 8)))
        number = number * 256 + uchar(byte);
    return number;
}

void checkField(const SeratoParser::Field &field)
{
    const QString text = field.text();
    require(text.size() == field.payload.size() / 2, "a text has a character for two bytes");
    const QByteArray encoded = encodeUtf16BigEndian(text);
    require(encoded.size() == 2 * text.size(), "a character takes two bytes");
    require(decodeUtf16BigEndian(encoded) == text, "a text comes back");
    if (!text.contains(QChar::ReplacementCharacter))
        require(encoded == field.payload.first(encoded.size()), "a sound text is its bytes");
    require(text.isValidUtf16(), "no half of a pair is left");
    require(field.number() == plainNumber(field.payload), "a number is its last bytes");
    require(field.flag() == (!field.payload.isEmpty() && field.payload[0] != 0), "a flag");
    require(Tag::fromText(field.tag.text()) == field.tag, "a tag comes back from its text");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView input = viewOf(data, size);
    const QList<PlainRecord> expected = plainRecordsIn(input);
    QByteArray written;
    qsizetype index = 0;
    const qsizetype walked = SeratoParser::walk(input, [&](const SeratoParser::Field &field) {
        require(index < expected.size(), "no record more");
        require(field.payload == expected.at(index).payload(), "the payload");
        checkField(field);
        SeratoParser::walk(field.payload, checkField);
        appendRecord(written, field.tag, field.payload);
        ++index;
    });
    require(index == expected.size(), "no record less");
    require(walked == sizeOf(expected), "as many bytes walked");
    require(written == input.first(walked), "written again byte for byte");
    require(SeratoParser::fieldsIn(input).size() == size_t(index), "the fields are the records");
    return 0;
}
