#pragma once

#include "platform/http.h"
#include "serato/serato_history.h"
#include "signal/signal_config.h"
#include "signal/signal_error.h"
#include "signal/signal_records.h"

#include <QList>

#include <optional>
#include <span>

/// What goes to a Signal server and what comes back. The keys and paths are frozen: servers know
/// them. Pure functions; `signal_client.h` does the asking.
namespace tarnwick::SignalWire {

/// The text of a filter that filters nothing.
inline constexpr char16_t everything[] = u"All";

/// The address of the server: blanks around it don't count, and where it doesn't begin with "http"
/// it gets "https://". Fails where that is no address of a host.
SignalResult<QUrl> base(const SignalConfig &config);

/// Requests. They fail where there is no server to ask.
SignalResult<platform::HttpRequest> healthRequest(const SignalConfig &config);
SignalResult<platform::HttpRequest> statsRequest(const SignalConfig &config);
SignalResult<platform::HttpRequest> landingRequest(const SignalConfig &config, int windowDays,
                                                   const std::optional<QString> &lane,
                                                   const std::optional<QString> &city);
SignalResult<platform::HttpRequest> eventsRequest(const SignalConfig &config,
                                                  std::span<const PlayEvent> events);
SignalResult<platform::HttpRequest> leaveRequest(const SignalConfig &config);

/// The body of `eventsRequest`: each track once a week, however often it was played.
QByteArray eventsBody(const SignalConfig &config, std::span<const PlayEvent> events);

/// Answers; nothing where the bytes are not what they should be.
std::optional<QList<LandingTrack>> landingIn(QByteArrayView body);
std::optional<SignalClient::PoolStats> statsIn(QByteArrayView body);
/// How many plays of this DJ's the pool holds.
std::optional<qint64> youFeedIn(QByteArrayView body);
/// How many plays were erased.
std::optional<qint64> deletedIn(QByteArrayView body);

} // namespace tarnwick::SignalWire
