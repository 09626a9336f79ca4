// The settings for Signal.

#include "fuzz_input.h"
#include "scratch.h"
#include "signal/signal_config.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scratch scratch;
    static const bool isMade = QDir().mkpath(scratch.path(u"Tarnwick"_s));
    require(isMade, "a data folder");
    qputenv("XDG_DATA_HOME", scratch.path({}).toUtf8());
    const QString name = u"Tarnwick/signal.json"_s;
    scratch.put(name, viewOf(data, size));

    const SignalConfig config = SignalConfig::loadOrCreate();
    require(SignalConfig::loadOrCreate() == config, "an identity is made once");
    config.save();
    const QByteArray file = scratch.contentOf(name);
    require(SignalConfig::loadOrCreate() == config, "what is saved comes back");
    SignalConfig::loadOrCreate().save();
    require(scratch.contentOf(name) == file, "byte for byte");
    return 0;
}
