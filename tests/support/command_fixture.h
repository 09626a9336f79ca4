#pragma once

#include "safety/store.h"
#include "support/app_fixture.h"
#include "support/test_files.h"

#include <QSignalSpy>

namespace tarnwick::testing {

/// A user with a home library whose commands are tested: what they said, what they logged, what
/// they left on disk.
class CommandFixture : public AppFixture
{
public:
    /// Adds a file with its track; gives the path as the database holds it.
    QString addTrack(const QString &name, const QByteArrayList &moreFields = {},
                     const QByteArray &content = "not really audio")
    {
        const QString path = writeAudio(name, content);
        addRecord(path, moreFields);
        return path;
    }
    /// Adds a track whose file is nowhere.
    QString addMissingTrack(const QString &name, const QByteArrayList &moreFields = {})
    {
        const QString path = home(name).sliced(1);
        addRecord(path, moreFields);
        return path;
    }

    /// Writes the database of all that was added, scans it, and starts to listen.
    AppState &start()
    {
        m_databaseFile = writeHomeDatabase(m_records);
        AppState &state = launchAndScan();
        listen();
        return state;
    }
    /// Ends the process's state and makes it anew, as a restart would, with its first scan.
    AppState &restart()
    {
        AppState &state = launchAndScan();
        listen();
        return state;
    }

    QByteArray database() const { return contentOf(m_databaseFile); }
    QString databaseFile() const { return m_databaseFile; }

    /// Puts something in the way of all further snapshots.
    void preventSnapshots() const
    {
        QDir(root().path(QStringLiteral("data/Tarnwick/Snapshots"))).removeRecursively();
        root().write(QStringLiteral("data/Tarnwick/Snapshots"), "no folder");
    }

    const ScannedTrack &track(qsizetype index) { return app().result()->tracks.at(size_t(index)); }
    QStringList paths()
    {
        QStringList all;
        for (const ScannedTrack &scanned : app().result()->tracks)
            all.append(scanned.track.relativePath);
        return all;
    }

    /// The toasts since the start: a reversible one ends in " [Undo]", a refusal or failure in "
    /// [!]".
    QStringList toasts() const { return m_toasts; }
    void forgetToasts() { m_toasts.clear(); }
    ChangeEntry newestEntry() { return app().changeLog().entries().value(0); }
    qsizetype snapshotCount() { return app().snapshots().size(); }

private:
    void addRecord(const QString &path, const QByteArrayList &moreFields)
    {
        m_records.append(trackRecord(QByteArrayList{textRecord("pfil", path)} + moreFields));
    }

    void listen()
    {
        m_toasts.clear();
        QObject::connect(&app(), &AppState::toastRaised, &app(), [this](const Toast &toast) {
            m_toasts.append(toast.message +
                            (toast.reversible ? QStringLiteral(" [Undo]") : QString()) +
                            (toast.isProblem ? QStringLiteral(" [!]") : QString()));
        });
    }

    QByteArrayList m_records;
    QString m_databaseFile;
    QStringList m_toasts;
};

/// The parts of an entry that a command chooses, as one text.
inline QString chosen(const ChangeEntry &entry)
{
    const QString none = QStringLiteral("(none)");
    return QStringLiteral("%1 | %2 | %3 | %4 | %5 | %6")
        .arg(ChangeEntry::rawValue(entry.kind), entry.target, entry.detail,
             entry.before.value_or(none), entry.after.value_or(none))
        .arg(entry.reversibleUntil ? entry.date.daysTo(*entry.reversibleUntil) : 0);
}

} // namespace tarnwick::testing
