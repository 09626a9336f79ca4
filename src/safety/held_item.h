#pragma once

#include "foundation/json_reader.h"
#include "foundation/json_writer.h"
#include "platform/clock.h"

#include <QDateTime>
#include <QString>

namespace tarnwick {

/// A file of the user's that was taken out of a library and can be given back. Nothing of the
/// record changes but `restored`.
struct HeldItem
{
    QString id;            ///< "held-{number}-{seconds since 1970}"; the name of its own folder
    QString originalPath;  ///< absolute; from where it was taken
    QString heldPath;      ///< absolute; where it now lies
    QString reason;        ///< why, from the command that held it
    QDateTime date;        ///< UTC, whole seconds
    QDateTime expiresAt;   ///< calendar days later, at the same time of the day
    bool restored = false; ///< it was given back, or has gone missing

    bool isExpired(const QDateTime &now = platform::now()) const;
    /// Whole days left, 0 once expired.
    int daysLeft(const QDateTime &now = platform::now()) const;

    /// One JSON object, its keys the names above; all are required.
    static bool read(JsonReader &json, HeldItem &item, bool *hasWrittenForm = nullptr);
    void write(JsonWriter &json) const;

    bool operator==(const HeldItem &) const = default;
};

} // namespace tarnwick
