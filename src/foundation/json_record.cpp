#include "foundation/json_record.h"

#include "foundation/dates.h"

#include <type_traits>

namespace tarnwick {

namespace {

bool readValue(JsonReader &json, QString &out)
{
    return json.text(out);
}

bool readValue(JsonReader &json, QByteArray &out)
{
    return json.utf8(out);
}

bool readValue(JsonReader &json, qint64 &out)
{
    return json.whole(out);
}

bool readValue(JsonReader &json, quint64 &out)
{
    return json.whole(out);
}

bool readValue(JsonReader &json, bool &out)
{
    return json.boolean(out);
}

bool readValue(JsonReader &json, QDateTime &out)
{
    QByteArray text;
    if (!json.utf8(text))
        return false;
    const auto moment = parseIsoSeconds(QLatin1StringView(text));
    out = moment.value_or(QDateTime());
    return moment.has_value();
}

template <typename T>
bool readValue(JsonReader &json, std::optional<T> &out)
{
    out.reset();
    return json.takeNull() || readValue(json, out.emplace());
}

template <typename T>
constexpr bool isOptional = false;
template <typename T>
constexpr bool isOptional<std::optional<T>> = true;

bool isRequired(const JsonField &field)
{
    return std::visit([](auto *target) { return !isOptional<std::decay_t<decltype(*target)>>; },
                      field.target);
}

/// The index of a key, or the number of fields for an unknown one. Starts at a guess, since the
/// keys of a file that this program wrote come in the order of the fields.
size_t indexOf(std::span<const JsonField> fields, QByteArrayView key, size_t guess)
{
    for (size_t i = guess; i < fields.size(); ++i) {
        if (fields[i].key == key)
            return i;
    }
    for (size_t i = 0; i < guess; ++i) {
        if (fields[i].key == key)
            return i;
    }
    return fields.size();
}

} // namespace

bool readRecord(JsonReader &json, std::span<const JsonField> fields, bool *hasWrittenForm)
{
    quint64 seen = 0;
    size_t next = 0;
    bool isInOrder = true;
    json.valueStart();
    json.watchForm();
    const bool isObject = json.object([&](QByteArrayView key) {
        const size_t index = indexOf(fields, key, next);
        isInOrder = isInOrder && index >= next && index < fields.size();
        if (index == fields.size())
            return json.skip();
        next = index + 1;
        seen |= quint64(1) << index;
        return std::visit([&](auto *target) { return readValue(json, *target); },
                          fields[index].target);
    });
    for (size_t i = 0; i < fields.size() && isObject; ++i) {
        if (isRequired(fields[i]) && !(seen & (quint64(1) << i)))
            return false;
    }
    if (hasWrittenForm)
        *hasWrittenForm = isInOrder && json.hasWrittenForm();
    return isObject;
}

} // namespace tarnwick
