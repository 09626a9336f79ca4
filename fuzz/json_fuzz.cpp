// The strict JSON reader: all that it takes is JSON for Qt's reader too, with the same values.

#include "foundation/json_reader.h"
#include "foundation/json_writer.h"
#include "fuzz_input.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

std::optional<QJsonValue> read(JsonReader &json, QByteArrayView bytes);

std::optional<QJsonValue> readObject(JsonReader &json, QByteArrayView bytes)
{
    QJsonObject object;
    const bool isGood = json.object([&](QByteArrayView key) {
        const QString name = JsonReader::toText(key);
        const auto value = read(json, bytes);
        if (value)
            object.insert(name, *value);
        return value.has_value();
    });
    return isGood ? std::optional<QJsonValue>(object) : std::nullopt;
}

std::optional<QJsonValue> readArray(JsonReader &json, QByteArrayView bytes)
{
    QJsonArray array;
    const bool isGood = json.array([&] {
        const auto value = read(json, bytes);
        if (value)
            array.append(*value);
        return value.has_value();
    });
    return isGood ? std::optional<QJsonValue>(array) : std::nullopt;
}

std::optional<QJsonValue> read(JsonReader &json, QByteArrayView bytes)
{
    const qsizetype at = json.valueStart();
    QString text;
    bool flag = false;
    double number = 0;
    switch (at < bytes.size() ? bytes[at] : '\0') {
    case '{':
        return readObject(json, bytes);
    case '[':
        return readArray(json, bytes);
    case '"':
        return json.text(text) ? std::optional<QJsonValue>(text) : std::nullopt;
    case 't':
    case 'f':
        return json.boolean(flag) ? std::optional<QJsonValue>(flag) : std::nullopt;
    case 'n':
        return json.takeNull() ? std::optional<QJsonValue>(QJsonValue::Null) : std::nullopt;
    default:
        return json.number(number) ? std::optional<QJsonValue>(number) : std::nullopt;
    }
}

void write(JsonWriter &json, const QJsonValue &value)
{
    if (value.isObject()) {
        json.beginObject();
        const QJsonObject object = value.toObject();
        for (auto member = object.begin(); member != object.end(); ++member) {
            json.key(member.key());
            write(json, member.value());
        }
        json.endObject();
    } else if (value.isArray()) {
        json.beginArray();
        for (const QJsonValue &element : value.toArray())
            write(json, element);
        json.endArray();
    } else if (value.isString()) {
        json.value(value.toString());
    } else if (value.isBool()) {
        json.value(value.toBool());
    } else if (value.isDouble()) {
        json.value(value.toDouble());
    } else {
        json.null();
    }
}

/// Numbers are compared as such: Qt keeps a large one as a whole number or not, by where it is
/// from.
bool isSame(const QJsonValue &one, const QJsonValue &other)
{
    if (one.isArray() && other.isArray()) {
        const QJsonArray left = one.toArray();
        const QJsonArray right = other.toArray();
        return std::equal(left.begin(), left.end(), right.begin(), right.end(), isSame);
    }
    if (one.isObject() && other.isObject()) {
        const QJsonObject left = one.toObject();
        const QJsonObject right = other.toObject();
        return left.keys() == right.keys() &&
               std::equal(left.begin(), left.end(), right.begin(), right.end(), isSame);
    }
    if (one.isDouble() && other.isDouble())
        return one.toDouble() == other.toDouble();
    return one == other;
}

std::optional<QJsonValue> valueOf(QByteArrayView bytes)
{
    JsonReader json(bytes);
    const auto value = read(json, bytes);
    return value && json.end() ? value : std::nullopt;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView input = viewOf(data, size);
    const auto value = valueOf(input);
    JsonReader skipping(input);
    require((skipping.skip() && skipping.end()) == value.has_value(), "skipping reads the same");
    if (!value || !(value->isObject() || value->isArray()))
        return 0;
    noteRead();
    const QJsonDocument document = QJsonDocument::fromJson(input.toByteArray());
    require(!document.isNull(), "it is JSON");
    if (!holdsInnerMark(input)) {
        const QJsonValue expected =
            document.isObject() ? QJsonValue(document.object()) : QJsonValue(document.array());
        require(isSame(*value, expected), "with these values");
    }

    for (const auto style : {JsonWriter::Style::Compact, JsonWriter::Style::Pretty}) {
        QByteArray written;
        JsonWriter json(written, style);
        write(json, *value);
        const auto again = valueOf(written);
        require(again && isSame(*again, *value), "the values come back");
    }
    return 0;
}
