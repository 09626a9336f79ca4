#pragma once

#include "foundation/json_reader.h"

#include <QDateTime>
#include <QString>

#include <optional>
#include <span>
#include <variant>

namespace tarnwick {

/// One field of a record that is kept as a JSON object: its key, and the variable that it is read
/// into. A variable that is optional makes the field optional; any other is required.
struct JsonField
{
    using Target = std::variant<QString *, QByteArray *, qint64 *, quint64 *, bool *, QDateTime *,
                                std::optional<QString> *, std::optional<QByteArray> *,
                                std::optional<QDateTime> *>;

    QByteArrayView key; ///< ASCII, without anything that JSON escapes
    Target target;
};

/// Reads an object whose members are these fields. Unknown keys are skipped, null in an optional
/// field is its absence, of equal keys the last counts. False if the object is anything else: a
/// required field without a value, a value of another type, a date of any form but
/// "YYYY-MM-DDTHH:MM:SSZ". A QByteArray gets the text's UTF-8 and may share the reader's bytes.
///
/// The variables must hold their defaults beforehand. Where `hasWrittenForm` is given, it tells
/// whether the object's text is exactly what JsonWriter's pretty style would make of these fields,
/// given in the order of their keys.
bool readRecord(JsonReader &json, std::span<const JsonField> fields,
                bool *hasWrittenForm = nullptr);

} // namespace tarnwick
