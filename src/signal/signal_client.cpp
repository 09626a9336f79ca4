#include "signal/signal_client.h"

#include "signal/signal_wire.h"

namespace tarnwick::SignalClient {

namespace {

constexpr int success = 200; ///< the only one: a server has no reason to say 204

/// The body of a good answer.
SignalResult<QByteArray> ask(const SignalResult<platform::HttpRequest> &request)
{
    if (!request)
        return tl::unexpected(request.error());
    const auto reply = platform::sendHttp(*request);
    if (!reply)
        return tl::unexpected(SignalError::transport(reply.error().message));
    if (reply->status != success)
        return tl::unexpected(SignalError::http(reply->status));
    return reply->body;
}

template <typename T>
SignalResult<T> decoded(const SignalResult<QByteArray> &body,
                        std::optional<T> (*decode)(QByteArrayView))
{
    if (!body)
        return tl::unexpected(body.error());
    if (std::optional<T> value = decode(*body))
        return *std::move(value);
    return tl::unexpected(SignalError::unreadable());
}

} // namespace

bool health(const SignalConfig &config)
{
    return ask(SignalWire::healthRequest(config)).has_value();
}

SignalResult<PoolStats> stats(const SignalConfig &config)
{
    return decoded(ask(SignalWire::statsRequest(config)), SignalWire::statsIn);
}

SignalResult<QList<LandingTrack>> landing(const SignalConfig &config, int windowDays,
                                          const std::optional<QString> &lane,
                                          const std::optional<QString> &city)
{
    return decoded(ask(SignalWire::landingRequest(config, windowDays, lane, city)),
                   SignalWire::landingIn);
}

SignalResult<qint64> contribute(const SignalConfig &config, std::span<const PlayEvent> events)
{
    return decoded(ask(SignalWire::eventsRequest(config, events)), SignalWire::youFeedIn);
}

SignalResult<qint64> leave(const SignalConfig &config)
{
    // Erased is erased: an answer that can't be read only leaves the number open.
    return ask(SignalWire::leaveRequest(config)).map([](const QByteArray &body) {
        return SignalWire::deletedIn(body).value_or(0);
    });
}

} // namespace tarnwick::SignalClient
