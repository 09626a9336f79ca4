#pragma once

#include <QString>

#include <tl/expected.hpp>

namespace tarnwick {

/// Why a request to a Signal server came to nothing.
struct SignalError
{
    enum class Kind {
        Http,       ///< an answer of another status than 200
        Transport,  ///< no whole answer
        NoServer,   ///< no address to ask
        Unreadable, ///< an answer that is not what was asked for
    };

    Kind kind = Kind::NoServer;
    int status = 0; ///< of an answer
    QString text;   ///< the system's words where no answer came

    static SignalError http(int status) { return {Kind::Http, status, {}}; }
    static SignalError transport(const QString &text) { return {Kind::Transport, 0, text}; }
    static SignalError noServer() { return {}; }
    static SignalError unreadable() { return {Kind::Unreadable, 0, {}}; }

    /// For the user.
    QString message() const;

    bool operator==(const SignalError &) const = default;
};

template <typename T>
using SignalResult = tl::expected<T, SignalError>;

} // namespace tarnwick
