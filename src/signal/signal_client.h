#pragma once

#include "serato/serato_history.h"
#include "signal/signal_config.h"
#include "signal/signal_error.h"
#include "signal/signal_records.h"

#include <QList>

#include <optional>
#include <span>

/// Asks a Signal server. Each operation is one request, made on demand, with no connection, queue
/// or retry; it waits for the answer, so call it in the background. Nothing is filtered here that
/// the server sends.
namespace tarnwick::SignalClient {

/// Whether the server answers. Never fails.
bool health(const SignalConfig &config);

SignalResult<PoolStats> stats(const SignalConfig &config);

/// The chart, in the server's order. A lane or a city of "All", and an empty city, don't filter.
SignalResult<QList<LandingTrack>> landing(const SignalConfig &config, int windowDays,
                                          const std::optional<QString> &lane,
                                          const std::optional<QString> &city);

/// Shares plays, each track once a week; gives how many of this DJ's plays the pool then holds.
/// Whether the user wants to share is for the caller to know.
SignalResult<qint64> contribute(const SignalConfig &config, std::span<const PlayEvent> events);

/// Has all plays of this DJ's erased; gives their number, 0 where the server doesn't tell.
SignalResult<qint64> leave(const SignalConfig &config);

} // namespace tarnwick::SignalClient
