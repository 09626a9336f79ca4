#pragma once

#include "cli/output.h"

namespace tarnwick::cli {

/// A member that is an array of texts.
template <typename Texts>
void writeTexts(JsonWriter &json, QStringView name, const Texts &texts)
{
    json.key(name);
    json.beginArray();
    for (const QString &text : texts)
        json.value(text);
    json.endArray();
}

/// A member that is an array of objects, passed on as it grows. `write(json, item)` writes the
/// members of one.
template <typename Items, typename Write>
void writeObjects(Output &out, QStringView name, const Items &items, const Write &write)
{
    JsonWriter &json = out.json();
    json.key(name);
    json.beginArray();
    for (const auto &item : items) {
        json.beginObject();
        write(json, item);
        json.endObject();
        out.passOn();
    }
    json.endArray();
}

} // namespace tarnwick::cli
