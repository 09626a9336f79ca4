#pragma once

#include "foundation/result.h"

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <chrono>
namespace tarnwick::platform {

/// A header of a request.
struct HttpHeader
{
    QByteArray name;
    QByteArray value;
};

/// A request to an HTTP server, and how much patience and memory its answer gets.
struct HttpRequest
{
    enum class Method { Get, Post };

    Method method = Method::Get;
    QUrl url = {};
    QList<HttpHeader> headers = {};
    QByteArray body = {}; ///< of a POST
    /// How long the server may keep silent, before its answer or in the midst of it.
    std::chrono::milliseconds patience = std::chrono::seconds(60);
    qint64 largestBody = 16'000'000; ///< bytes, unpacked; a longer answer is a failure
};

/// A server's answer, whatever its status.
struct HttpReply
{
    int status = 0;
    QByteArray body = {};
};

/// Sends a request and waits for the whole answer: call it in the background. Fails, in the words
/// of the system, where no whole answer comes.
///
/// Follows a redirect only to the same scheme, host and port, since it takes the headers along; any
/// other counts as the answer. Sends a POST once and never again. Sends and keeps no cookies, and
/// keeps nothing on disk.
Result<HttpReply> sendHttp(const HttpRequest &request);

/// Gives every request this much patience for the guard's life. For tests.
class ScopedHttpPatience
{
public:
    explicit ScopedHttpPatience(std::chrono::milliseconds patience);
    ~ScopedHttpPatience();
    ScopedHttpPatience(const ScopedHttpPatience &) = delete;
    ScopedHttpPatience &operator=(const ScopedHttpPatience &) = delete;
};

} // namespace tarnwick::platform
