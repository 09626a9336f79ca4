#pragma once

#include "signal/signal_records.h"

#include <QList>
#include <QSet>

#include <optional>

/// What is said of a community's chart, of its pool and of the part that the user plays in it.
namespace tarnwick::SignalFigures {

/// The spans of a chart that are offered, in days.
inline constexpr int windows[] = {7, 30, 90};
inline constexpr int firstWindow = 30;
/// The lane that leaves nothing out.
inline constexpr QStringView everyLane = u"All";

QString shareTitle(bool sharing);
QString shareLine(bool sharing, qint64 youFeed);
QString contributeTitle(bool busy);
QString pool(const SignalClient::PoolStats &stats);
/// What the address, as typed, calls its host; a word for it where it names none.
QString host(const QString &serverUrl);

QString windowTitle(int days);
QString laneTitle(const QString &lane);

QString line(const LandingTrack &track);
/// The lanes that a track is played in; empty where nothing is known of them.
QString lanes(const LandingTrack &track);
QString djs(const LandingTrack &track);
QString plays(const LandingTrack &track);

/// The rows that the user has a file for, in their order.
QList<LandingTrack> ownedAmong(const QList<LandingTrack> &chart, const QSet<QString> &owned);

} // namespace tarnwick::SignalFigures
