#pragma once

#include "serato/serato_parser.h"

#include <QString>

#include <functional>
#include <vector>

namespace tarnwick {

/// One play of a track, as a session of Serato's history tells it.
struct PlayEvent
{
    QString trackKey; ///< 20 hexadecimal digits; the same on every machine
    QString title;
    QString artist;
    QString lane;
    QString week;       ///< Monday of the ISO week of the play in local time, "yyyy-MM-dd"
    QString playedPath; ///< as the session states it; never leaves this machine

    bool operator==(const PlayEvent &) const = default;
};

/// What was played, out of the session files that Serato writes. Their entries hold numbered fields
/// where the other files have tags:
///
///     offset 0   4 bytes   number of the field, big-endian
///     offset 4   4 bytes   length of the payload, big-endian
///     offset 8   length    payload
///
/// Keeps no state: each call reads every session file afresh, so call it in the background.
namespace SeratoHistory {

/// The lane of a played path. Called on the thread that reads.
using LaneFor = std::function<QString(const QString &playedPath)>;

/// The folder of the session files. Always the home library's: a library on another drive keeps no
/// history of its own.
QString sessionsDir();

/// Every play that has a title, session after session in the order of their names. Never fails: a
/// file that can't be read is left out.
std::vector<PlayEvent> events(const LaneFor &laneFor);

/// Adds the plays in the bytes of one session file.
void appendEvents(std::vector<PlayEvent> &events, QByteArrayView session, const LaneFor &laneFor,
                  SeratoParser::Notes *notes = nullptr);

/// By what a community's server knows a track: the first ten bytes of a SHA-256 in hexadecimal
/// digits. Letter case doesn't matter; accents, punctuation and inner blanks do.
QString trackKey(const QString &artist, const QString &title);

} // namespace SeratoHistory

} // namespace tarnwick
