// The commands that write: repairs, and taking them back.

#include "cli/repair_actions.h"

#include "cli/session.h"
#include "foundation/numbers.h"
#include "platform/files.h"
#include "screens/fix_queue/fix_actions.h"
#include "screens/loudness/loudness_figures.h"
#include "screens/track_id/track_id_actions.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

Status noTrackAt(const QString &path)
{
    return Session::namesNothing(u"no track lies at '%1'"_s.arg(path));
}

/// Calls `act(track)` for the track that the first argument names.
template <typename Act>
Status withTrack(Session &session, Act act)
{
    const QString path = session.line().arguments[0];
    const ScannedTrack *found = session.trackAt(path);
    if (!found)
        return noTrackAt(path);
    // A copy: what was found goes with the result that the command changes.
    act(ScannedTrack(*found));
    return session.reportToasts();
}

/// The member of that path; nothing where the group has none.
std::optional<QUuid> memberAt(const DuplicateGroup &group, const QString &path)
{
    for (const ScannedTrack &member : group.members) {
        if (Session::liesAt(member, path))
            return member.id();
    }
    return std::nullopt;
}

std::optional<double> gainOf(const QString &text)
{
    static const QRegularExpression decimal(u"^[+-]?([0-9]+(\\.[0-9]*)?|\\.[0-9]+)$"_s);
    return decimal.match(text).hasMatch() ? parseTempo(text) : std::nullopt;
}

Status normalizeOutliers(Session &session)
{
    const auto derived = session.app().derived();
    const auto items = LoudnessFigures::levelling(
        *derived, LoudnessFigures::outliers(LoudnessFigures::tracks(*derived)));
    if (!items.empty())
        session.app().normalizeAllLoudness(items);
    return session.reportToasts();
}

} // namespace

Status runSnapshot(Session &session)
{
    session.app().takeSnapshot(session.line().value(u"reason"_s, u"Manual snapshot"_s));
    return session.reportToasts();
}

Status runRollback(Session &session)
{
    const QString id = session.line().arguments[0];
    const QList<Snapshot> &snapshots = session.app().snapshots();
    const auto snapshot = std::find_if(snapshots.begin(), snapshots.end(),
                                       [&](const Snapshot &one) { return one.id == id; });
    if (snapshot == snapshots.end())
        return Session::namesNothing(u"no snapshot is called '%1'"_s.arg(id));
    session.app().restoreSnapshot(Snapshot(*snapshot));
    return session.reportToasts();
}

Status runRelink(Session &session)
{
    const QString file = platform::absolutePath(session.line().arguments[1]);
    return withTrack(session, [&](const ScannedTrack &track) {
        session.app().relink(track, QUrl::fromLocalFile(file));
    });
}

Status runDrop(Session &session)
{
    return withTrack(session,
                     [&](const ScannedTrack &track) { session.app().dropFromLibrary(track); });
}

Status runResolveDuplicates(Session &session)
{
    const QString key = session.line().arguments[0];
    const auto derived = session.app().derived();
    const auto &groups = derived->duplicateGroups;
    const auto group = std::find_if(groups.begin(), groups.end(),
                                    [&](const DuplicateGroup &one) { return one.key == key; });
    if (group == groups.end())
        return Session::namesNothing(u"no duplicates of '%1'"_s.arg(key));
    QUuid keeper = group->members.front().id();
    if (session.line().has(u"keep"_s)) {
        const QString path = session.line().value(u"keep"_s);
        const auto member = memberAt(*group, path);
        if (!member)
            return Session::namesNothing(u"no duplicate of '%1' lies at '%2'"_s.arg(key, path));
        keeper = *member;
    }
    session.app().resolveDuplicates(*group, keeper);
    return session.reportToasts();
}

Done checkSetGenre(const CommandLine &line)
{
    if (line.has(u"batch"_s) || line.arguments.size() == 2)
        return {};
    return failure(u"too many arguments: several tracks take --batch"_s);
}

Status runSetGenre(Session &session)
{
    const QString genre = session.line().arguments[0];
    std::vector<ScannedTrack> tracks;
    for (const QString &path : session.line().arguments.sliced(1)) {
        const ScannedTrack *track = session.trackAt(path);
        if (!track)
            return noTrackAt(path);
        tracks.push_back(*track);
    }
    if (session.line().has(u"batch"_s))
        session.app().setGenreBatch(tracks, genre);
    else
        session.app().setGenre(tracks.front(), genre);
    return session.reportToasts();
}

Status runTagReady(Session &session)
{
    TrackIdActions::tagAllReady(session.app());
    return session.reportToasts();
}

Done checkNormalize(const CommandLine &line)
{
    if (line.has(u"outliers"_s) == !line.arguments.isEmpty())
        return failure(
            u"usage: tarnwick-cli normalize PATH [--gain DB], or normalize --outliers"_s);
    if (!line.has(u"gain"_s))
        return {};
    if (line.has(u"outliers"_s))
        return failure(u"--gain goes with a track"_s);
    if (!gainOf(line.value(u"gain"_s)))
        return failure(u"'%1' is no gain in decibels"_s.arg(line.value(u"gain"_s)));
    return {};
}

Status runNormalize(Session &session)
{
    if (session.line().has(u"outliers"_s))
        return normalizeOutliers(session);
    const QString path = session.line().arguments[0];
    const ScannedTrack *track = session.trackAt(path);
    if (!track)
        return noTrackAt(path);
    const auto gain = session.line().has(u"gain"_s)
                          ? gainOf(session.line().value(u"gain"_s))
                          : session.app().derived()->normalizingGain(*track);
    if (!gain)
        return Session::namesNothing(u"'%1' has no gain of its own: give --gain"_s.arg(path));
    session.app().normalizeLoudness(ScannedTrack(*track), *gain);
    return session.reportToasts();
}

Status runFixSafe(Session &session)
{
    FixActions::fixAllSafe(session.app());
    return session.reportToasts();
}

Status runUndo(Session &session)
{
    const QString id = session.line().arguments[0];
    const QList<ChangeEntry> entries = session.app().changeLog().entries();
    const auto entry = std::find_if(entries.begin(), entries.end(),
                                    [&](const ChangeEntry &one) { return one.id == id; });
    if (entry == entries.end())
        return Session::namesNothing(u"no change is called '%1'"_s.arg(id));
    session.app().undo(*entry);
    return session.reportToasts();
}

Status runUndoEverything(Session &session)
{
    session.app().undoEverything();
    return session.reportToasts();
}

Done checkRestoreCues(const CommandLine &line)
{
    if (line.has(u"all"_s) == !line.arguments.isEmpty())
        return failure(u"usage: tarnwick-cli restore-cues PATH, or restore-cues --all"_s);
    return {};
}

Status runRestoreCues(Session &session)
{
    if (session.line().has(u"all"_s)) {
        if (!session.app().cueLosses().isEmpty())
            session.app().restoreAllCues();
        return session.reportToasts();
    }
    const QString path = session.line().arguments[0];
    const ScannedTrack *track = session.trackAt(path);
    if (!track)
        return noTrackAt(path);
    for (const CueVault::Loss &loss : session.app().cueLosses()) {
        if (loss.track.id() != track->id())
            continue;
        session.app().restoreCues(loss);
        return session.reportToasts();
    }
    return Session::namesNothing(u"'%1' has lost no cues"_s.arg(path));
}

} // namespace tarnwick::cli
