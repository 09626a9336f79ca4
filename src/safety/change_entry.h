#pragma once

#include "foundation/json_reader.h"
#include "foundation/json_writer.h"
#include "platform/clock.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace tarnwick {

/// One thing that this program has done to a library. Nothing of it changes but `reversed`.
struct ChangeEntry
{
    enum class Kind { Snapshot, Rollback, Relink, Dedupe, RestoreCues, Tag, Gain, Archive };

    QString id; ///< "chg-{number}-{seconds since 1970}"
    Kind kind = Kind::Snapshot;
    QDateTime date;                           ///< UTC, whole seconds
    QString target;                           ///< what was changed, as a name for the user
    QString detail;                           ///< one sentence for the user
    std::optional<QString> before;            ///< where one value says it; an undo reads it
    std::optional<QString> after;             ///< likewise
    std::optional<QDateTime> reversibleUntil; ///< nothing: it can never be undone
    bool reversed = false;                    ///< it has been undone
    std::optional<QString> snapshotId;        ///< taken before this change, or recorded by it
    std::optional<QString> holdingId;         ///< of the file that this change put into holding

    /// True within the window and until it is undone. Whether an undo can in fact be carried out is
    /// for the undo to see.
    bool isReversible(const QDateTime &now = platform::now()) const;

    /// What a kind is called on screen.
    static QString label(Kind kind);
    /// The text by which a kind is stored.
    static QString rawValue(Kind kind);
    static std::optional<Kind> kindOf(QStringView rawValue);
    /// In the order of the enumeration.
    static QList<Kind> allKinds();

    /// One JSON object; what is optional and has no value is left out.
    static bool read(JsonReader &json, ChangeEntry &entry, bool *hasWrittenForm = nullptr);
    void write(JsonWriter &json) const;

    bool operator==(const ChangeEntry &) const = default;
};

} // namespace tarnwick
