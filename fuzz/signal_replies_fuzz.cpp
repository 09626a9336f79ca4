// Answers of a Signal server.

#include "fuzz_input.h"
#include "signal/signal_wire.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

/// The number as Qt reads it; whole numbers stay exact.
bool isNumber(const QJsonObject &object, const QString &key, qint64 number)
{
    return object.value(key).isDouble() && object.value(key).toInteger() == number;
}

void checkTrack(const LandingTrack &track, const QJsonObject &object)
{
    const auto text = [&](const QString &key) {
        const QJsonValue value = object.value(key);
        return value.isString() ? std::optional(value.toString()) : std::nullopt;
    };
    require(text(u"track_key"_s) == track.trackKey, "the key");
    require(text(u"title"_s) == track.title, "the title");
    require(text(u"artist"_s) == track.artist, "the artist");
    require(text(u"lanes"_s) == track.lanes, "the lanes");
    require(isNumber(object, u"djs"_s, track.djs), "the DJs");
    require(isNumber(object, u"plays"_s, track.plays), "the plays");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView body = viewOf(data, size);
    const auto tracks = SignalWire::landingIn(body);
    const auto stats = SignalWire::statsIn(body);
    const auto youFeed = SignalWire::youFeedIn(body);
    const auto deleted = SignalWire::deletedIn(body);
    if ((!tracks && !stats && !youFeed && !deleted) || holdsInnerMark(body))
        return 0;
    noteRead();
    const QJsonObject object = QJsonDocument::fromJson(body.toByteArray()).object();
    if (tracks) {
        const QJsonArray array = object.value(u"tracks"_s).toArray();
        require(array.size() == tracks->size(), "every track");
        for (qsizetype i = 0; i < array.size(); ++i)
            checkTrack(tracks->at(i), array.at(i).toObject());
    }
    if (stats) {
        require(isNumber(object, u"djs"_s, stats->djs), "DJs of the pool");
        require(isNumber(object, u"plays"_s, stats->plays), "plays of the pool");
        require(isNumber(object, u"tracks"_s, stats->tracks), "tracks of the pool");
    }
    require(!youFeed || isNumber(object, u"you_feed"_s, *youFeed), "what this DJ feeds");
    require(!deleted || isNumber(object, u"deleted"_s, *deleted), "what was erased");
    return 0;
}
