#include "signal/signal_wire.h"

#include "foundation/json_record.h"
#include "foundation/json_writer.h"
#include "foundation/text.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace tarnwick::SignalWire {

namespace {

using platform::HttpRequest;

SignalResult<HttpRequest> authed(const SignalConfig &config, const QString &name)
{
    return base(config).map([&](QUrl url) {
        QString path = url.path(QUrl::FullyEncoded);
        if (!path.endsWith(u'/'))
            path += u'/';
        url.setPath(path + name, QUrl::StrictMode);
        HttpRequest request{.url = url};
        if (const QStringView key = trimmedBlanks(config.apiKey); !key.isEmpty())
            request.headers.append(platform::HttpHeader{"X-API-Key", key.toUtf8()});
        return request;
    });
}

SignalResult<HttpRequest> posted(const SignalConfig &config, const QString &name,
                                 const QByteArray &body)
{
    return authed(config, name).map([&](HttpRequest request) {
        request.method = HttpRequest::Method::Post;
        request.headers.append(platform::HttpHeader{"Content-Type", "application/json"});
        request.body = body;
        return request;
    });
}

QString queryItem(const QString &name, const QString &value)
{
    return name + u'=' + QString::fromLatin1(QUrl::toPercentEncoding(value));
}

void writeEvent(JsonWriter &json, const SignalConfig &config, const PlayEvent &event)
{
    json.beginObject();
    json.member(u"track_key", event.trackKey);
    json.member(u"title", event.title);
    json.member(u"artist", event.artist);
    json.member(u"lane", event.lane);
    json.member(u"city_bucket", config.city);
    json.member(u"week", event.week);
    json.endObject();
}

/// A whole body that is one record.
bool readWhole(QByteArrayView body, std::span<const JsonField> fields)
{
    JsonReader json(body);
    return readRecord(json, fields) && json.end();
}

bool readTrack(JsonReader &json, LandingTrack &track)
{
    const JsonField fields[] = {
        {"track_key", &track.trackKey}, {"title", &track.title},
        {"artist", &track.artist},      {"djs", &track.djs},
        {"plays", &track.plays},        {"lanes", &track.lanes},
    };
    return readRecord(json, fields);
}

bool readTracks(JsonReader &json, QList<LandingTrack> &tracks)
{
    tracks.clear();
    return json.array([&] {
        LandingTrack track;
        if (!readTrack(json, track))
            return false;
        tracks.append(track);
        return true;
    });
}

} // namespace

SignalResult<QUrl> base(const SignalConfig &config)
{
    QString address = trimmedBlanks(config.serverUrl).toString();
    if (address.isEmpty())
        return tl::unexpected(SignalError::noServer());
    // No finer than that: a host whose name begins so has to be typed with its scheme.
    if (!address.startsWith(u"http"_s))
        address.prepend(u"https://"_s);
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty())
        return tl::unexpected(SignalError::noServer());
    return url;
}

SignalResult<HttpRequest> healthRequest(const SignalConfig &config)
{
    return authed(config, u"health"_s);
}

SignalResult<HttpRequest> statsRequest(const SignalConfig &config)
{
    return authed(config, u"stats"_s);
}

SignalResult<HttpRequest> landingRequest(const SignalConfig &config, int windowDays,
                                         const std::optional<QString> &lane,
                                         const std::optional<QString> &city)
{
    QStringList query = {queryItem(u"window"_s, QString::number(windowDays))};
    if (lane && *lane != everything)
        query << queryItem(u"lane"_s, *lane);
    if (city && *city != everything && !city->isEmpty())
        query << queryItem(u"city"_s, *city);
    return authed(config, u"landing"_s).map([&](HttpRequest request) {
        request.url.setQuery(query.join(u'&'), QUrl::StrictMode);
        return request;
    });
}

SignalResult<HttpRequest> eventsRequest(const SignalConfig &config,
                                        std::span<const PlayEvent> events)
{
    return posted(config, u"events"_s, eventsBody(config, events));
}

SignalResult<HttpRequest> leaveRequest(const SignalConfig &config)
{
    QByteArray body;
    JsonWriter json(body);
    json.beginObject();
    json.member(u"dj_hash", config.djHash);
    json.endObject();
    return posted(config, u"leave"_s, body);
}

QByteArray eventsBody(const SignalConfig &config, std::span<const PlayEvent> events)
{
    QByteArray body;
    JsonWriter json(body);
    json.beginObject();
    json.member(u"dj_hash", config.djHash);
    json.key(u"events");
    json.beginArray();
    QSet<QString> seen;
    seen.reserve(qsizetype(events.size()));
    for (const PlayEvent &event : events) {
        const qsizetype before = seen.size();
        seen.insert(event.trackKey + u'|' + event.week);
        if (seen.size() > before)
            writeEvent(json, config, event);
    }
    json.endArray();
    json.endObject();
    return body;
}

std::optional<QList<LandingTrack>> landingIn(QByteArrayView body)
{
    QList<LandingTrack> tracks;
    qint64 minDjs = 0; // the server keeps to it; here it is only insisted on
    bool hasTracks = false;
    bool hasMinDjs = false;
    JsonReader json(body);
    const bool isGood = json.object([&](QByteArrayView key) {
        if (key == "tracks")
            return hasTracks = readTracks(json, tracks);
        if (key == "min_djs")
            return hasMinDjs = json.whole(minDjs);
        return json.skip();
    });
    if (!isGood || !json.end() || !hasTracks || !hasMinDjs)
        return std::nullopt;
    return tracks;
}

std::optional<SignalClient::PoolStats> statsIn(QByteArrayView body)
{
    SignalClient::PoolStats stats;
    const JsonField fields[] = {
        {"djs", &stats.djs}, {"plays", &stats.plays}, {"tracks", &stats.tracks}};
    return readWhole(body, fields) ? std::optional(stats) : std::nullopt;
}

std::optional<qint64> youFeedIn(QByteArrayView body)
{
    qint64 accepted = 0;
    qint64 youFeed = 0;
    const JsonField fields[] = {{"accepted", &accepted}, {"you_feed", &youFeed}};
    return readWhole(body, fields) ? std::optional(youFeed) : std::nullopt;
}

std::optional<qint64> deletedIn(QByteArrayView body)
{
    qint64 deleted = 0;
    const JsonField fields[] = {{"deleted", &deleted}};
    return readWhole(body, fields) ? std::optional(deleted) : std::nullopt;
}

} // namespace tarnwick::SignalWire
