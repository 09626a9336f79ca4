#pragma once

#include <QString>

#include <optional>

namespace tarnwick {

/// A row of the chart, as the server sends it.
struct LandingTrack
{
    QString trackKey = {}; ///< as SeratoHistory::trackKey makes it
    std::optional<QString> title = {};
    std::optional<QString> artist = {};
    qint64 djs = 0;
    qint64 plays = 0;
    std::optional<QString> lanes = {}; ///< one text for all of them, as it came

    QString id() const { return trackKey; }

    bool operator==(const LandingTrack &) const = default;
};

namespace SignalClient {

/// What a server holds altogether.
struct PoolStats
{
    qint64 djs = 0;
    qint64 plays = 0;
    qint64 tracks = 0;

    bool operator==(const PoolStats &) const = default;
};

} // namespace SignalClient

} // namespace tarnwick
