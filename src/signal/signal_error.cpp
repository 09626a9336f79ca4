#include "signal/signal_error.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int unauthorized = 401;
constexpr int tooManyRequests = 429;

QString messageFor(int status)
{
    switch (status) {
    case unauthorized:
        return u"Access key required or incorrect — check the key your crew gave you."_s;
    case tooManyRequests:
        return u"Too many requests — give it a moment."_s;
    default:
        return u"Server returned %1."_s.arg(status);
    }
}

} // namespace

QString SignalError::message() const
{
    switch (kind) {
    case Kind::Http:
        return messageFor(status);
    case Kind::Transport:
        return u"Couldn't reach the server: "_s + text;
    case Kind::NoServer:
        return u"Set your Signal server URL first."_s;
    case Kind::Unreadable:
        return u"The server's answer couldn't be read."_s;
    }
    return {};
}

} // namespace tarnwick
