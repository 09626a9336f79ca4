#include "signal/signal_config.h"

#include "foundation/json_record.h"
#include "foundation/json_writer.h"
#include "foundation/paths.h"
#include "platform/files.h"
#include "platform/files_write.h"
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

} // namespace

SignalConfig SignalConfig::loadOrCreate()
{
    if (const auto file = platform::readFile(Store::signalConfig())) {
        if (const auto config = decoded(*file))
            return *config;
    }
    SignalConfig config;
    config.djHash = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    config.save();
    return config;
}

void SignalConfig::save() const
{
    QByteArray file;
    JsonWriter json(file, JsonWriter::Style::Pretty);
    json.beginObject();
    json.member(u"apiKey", apiKey);
    json.member(u"city", city);
    json.member(u"djHash", djHash);
    json.member(u"optIn", optIn);
    json.member(u"serverURL", serverUrl);
    json.endObject();
    file.append('\n');
    (void)platform::writeFilePlainly(Store::signalConfig(), file, ownerOnly);
}

} // namespace tarnwick
