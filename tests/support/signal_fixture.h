#pragma once

#include "platform/clock.h"
#include "serato/serato_history.h"
#include "signal/signal_client.h"
#include "support/app_fixture.h"
#include "support/scripted_server.h"
#include "support/session_builder.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

inline const QDateTime friday(QDate(2026, 11, 20), QTime(12, 0), Qt::UTC);
inline const QStringList onThatFriday = {u"--today"_s, u"2026-11-20"_s};
constexpr quint32 day = 86400;

inline quint32 seconds(const QDateTime &moment)
{
    return quint32(moment.toSecsSinceEpoch());
}

inline QByteArray track(const QString &path, const QString &title, const QString &genre,
                        const QString &bpm = {})
{
    return trackRecord({textRecord("pfil", path), textRecord("tsng", title),
                        textRecord("tart", u"Artist"), textRecord("tgen", genre),
                        textRecord("tbpm", bpm)});
}

inline QString keyOf(const QString &title)
{
    return SeratoHistory::trackKey(u"Artist"_s, title);
}

inline QStringList messagesOf(const QSignalSpy &toasts)
{
    QStringList messages;
    for (const QList<QVariant> &arguments : toasts)
        messages << arguments.first().value<Toast>().message;
    return messages;
}

/// A DJ with a library and a history, on a Friday.
class SignalFixture : public AppFixture
{
public:
    AppState &launchWith(const QString &url, bool optIn = true)
    {
        AppState &app = launch(AppState::Environment::Ignored);
        connectTo(app, url, optIn);
        return app;
    }
    static void connectTo(AppState &app, const QString &url, bool optIn = true)
    {
        SignalConfig config = app.signal();
        config.serverUrl = url;
        config.optIn = optIn;
        app.setSignal(config);
        app.saveSignal();
    }
    void writeSession(const QString &name, const QByteArrayList &plays) const
    {
        root().write(u"home/Music/_Serato_/History/Sessions/"_s + name, plays.join());
    }
    /// A library of three tracks, one of them missing, and a history of six plays.
    void writeLibraryAndHistory()
    {
        const QString a = writeAudio(u"a.mp3"_s);
        const QString b = writeAudio(u"b.mp3"_s);
        writeHomeDatabase({track(a, u"A"_s, u"House"_s), track(b, u"B"_s, {}, u"125"_s),
                           track(u"gone/c.mp3"_s, u"C"_s, u"Techno"_s)});
        const quint32 now = seconds(friday);
        writeSession(u"1.session"_s, {playEntry(QString(u'/' + a), u"A", u"Artist", now),
                                      playEntry(QString(u'/' + a), u"A", u"Artist", now - day),
                                      playEntry(QString(u'/' + b), u"B", u"Artist", now)});
        writeSession(u"2.session"_s,
                     {playEntry(u"/gone/c.mp3", u"C", u"Artist", now),
                      playEntry(u"/elsewhere/d.mp3", u"D", u"Artist", now),
                      playEntry(QString(u'/' + a), u"A", u"Artist", now - 7 * day)});
    }
    /// What the pool holds, by title, as another DJ would see it.
    static QStringList rowsOf(const QString &url, const std::optional<QString> &lane = {})
    {
        const auto tracks = whileServing(
            [&] { return SignalClient::landing({.serverUrl = url}, 30, lane, std::nullopt); });
        QStringList rows;
        for (const LandingTrack &row : tracks.value())
            rows << u"%1 %2"_s.arg(row.title.value_or(QString())).arg(row.plays);
        rows.sort();
        return rows;
    }

private:
    platform::ScopedClock m_clock{friday};
};

} // namespace tarnwick::testing
