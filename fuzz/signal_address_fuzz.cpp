// The address of a Signal server as somebody typed it, and the requests made of it.

#include "fuzz_input.h"
#include "signal/signal_wire.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Pieces pieces(viewOf(data, size));
    SignalConfig config;
    config.serverUrl = pieces.utf8();
    config.apiKey = pieces.utf8();
    const QString lane = pieces.utf8();
    const QString city = pieces.utf8();
    const auto base = SignalWire::base(config);
    const auto landing = SignalWire::landingRequest(config, pieces.byte(), lane, city);
    require(base.has_value() == landing.has_value(), "whether there is a server");
    if (!base)
        return 0;
    require(base->isValid() && !base->host().isEmpty(), "the address of a host");
    require(landing->url.isValid(), "a request goes to an address");
    require(landing->url.host() == base->host(), "of that host");
    require(landing->url.port() == base->port(), "at that port");
    require(landing->url.path().endsWith(u"/landing"_s), "for the chart");
    return 0;
}
