#include "signal/signal_config.h"

#include "foundation/json_record.h"
#include "foundation/json_writer.h"
#include "foundation/paths.h"
#include "platform/shared_file.h"
#include "safety/store.h"

#include <QUuid>

#include <optional>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr mode_t ownerOnly = 0600;

std::optional<SignalConfig> decoded(const QByteArray &file)
{
    SignalConfig config;
    const JsonField fields[] = {
        {"apiKey", &config.apiKey}, {"city", &config.city},           {"djHash", &config.djHash},
        {"optIn", &config.optIn},   {"serverURL", &config.serverUrl},
    };
    JsonReader json(file);
    if (!readRecord(json, fields) || !json.end())
        return std::nullopt;
    return config;
}

QByteArray encoded(const SignalConfig &config)
{
    QByteArray file;
    JsonWriter json(file, JsonWriter::Style::Pretty);
    json.beginObject();
    json.member(u"apiKey", config.apiKey);
    json.member(u"city", config.city);
    json.member(u"djHash", config.djHash);
    json.member(u"optIn", config.optIn);
    json.member(u"serverURL", config.serverUrl);
    json.endObject();
    file.append('\n');
    return file;
}

} // namespace

SignalConfig SignalConfig::loadOrCreate()
{
    platform::FileState state;
    if (const auto content = platform::readSharedFile(Store::signalConfig(), state)) {
        if (const auto config = decoded(*content))
            return *config;
    }
    platform::SharedFileWrite file(Store::signalConfig(), ownerOnly);
    // Another process may have been first.
    if (const auto content = file.contentUnlike(state)) {
        if (const auto config = decoded(*content))
            return *config;
    }
    SignalConfig config;
    config.djHash = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    (void)file.write(encoded(config), state);
    return config;
}

void SignalConfig::save() const
{
    platform::FileState state;
    (void)platform::SharedFileWrite(Store::signalConfig(), ownerOnly).write(encoded(*this), state);
}

} // namespace tarnwick
