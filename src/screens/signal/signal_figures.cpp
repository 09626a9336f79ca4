#include "screens/signal/signal_figures.h"

#include <QUrl>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace tarnwick::SignalFigures {

QString shareTitle(bool sharing)
{
    return sharing ? u"Sharing your plays"_s : u"Reading only — not sharing"_s;
}

QString shareLine(bool sharing, qint64 youFeed)
{
    return sharing ? u"You feed %1 · you read the full feed"_s.arg(youFeed)
                   : u"You read public counts only. Turn on to contribute and see everything."_s;
}

QString contributeTitle(bool busy)
{
    return busy ? u"Sharing…"_s : u"Contribute my plays"_s;
}

QString pool(const SignalClient::PoolStats &stats)
{
    return u"%1 DJs · %2 tracks in the pool"_s.arg(stats.djs).arg(stats.tracks);
}

QString host(const QString &serverUrl)
{
    // What requests couldn't use has no host here either.
    const QUrl url(serverUrl, QUrl::StrictMode);
    const QString host = url.host();
    if (!url.isValid() || host.isEmpty())
        return u"server"_s;
    // As it was typed, where the library writes it in its own way.
    const qsizetype typed = serverUrl.indexOf(host, 0, Qt::CaseInsensitive);
    return typed < 0 ? host : serverUrl.sliced(typed, host.size());
}

QString windowTitle(int days)
{
    return u"%1d"_s.arg(days);
}

QString laneTitle(const QString &lane)
{
    return lane == everyLane ? u"All lanes"_s : lane;
}

QString line(const LandingTrack &track)
{
    const QString title = track.title.value_or(u"Unknown"_s);
    const QString artist = track.artist.value_or(QString());
    return artist.isEmpty() ? title : artist + u" — "_s + title;
}

QString lanes(const LandingTrack &track)
{
    return track.lanes.value_or(QString()).replace(u',', u" · "_s);
}

QString djs(const LandingTrack &track)
{
    return u"%1 DJs"_s.arg(track.djs);
}

QString plays(const LandingTrack &track)
{
    return u"%1 plays"_s.arg(track.plays);
}

QList<LandingTrack> ownedAmong(const QList<LandingTrack> &chart, const QSet<QString> &owned)
{
    QList<LandingTrack> rows;
    std::copy_if(chart.begin(), chart.end(), std::back_inserter(rows),
                 [&owned](const LandingTrack &track) { return owned.contains(track.trackKey); });
    return rows;
}

} // namespace tarnwick::SignalFigures
