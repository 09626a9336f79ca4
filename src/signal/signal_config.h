#pragma once

#include <QString>

namespace tarnwick {

/// The user's settings for Signal, kept in the data folder's `signal.json`.
struct SignalConfig
{
    QString serverUrl = {}; ///< as typed; made an address only where it is used
    QString djHash = {};    ///< a random identity in upper case, made once; names nobody
    QString city = {};
    bool optIn = false;  ///< whether plays are shared
    QString apiKey = {}; ///< the crew's access key; empty for none

    /// What was saved; where that can't be had, new settings with a new identity, which are saved
    /// in its place. Never fails.
    static SignalConfig loadOrCreate();
    /// A failure is ignored. The file holds a key, so only its owner can read it.
    void save() const;

    bool operator==(const SignalConfig &) const = default;
};

} // namespace tarnwick
