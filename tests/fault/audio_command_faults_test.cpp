// The commands that write into audio files, interrupted: whichever call of the system fails, and
// wherever the process is killed, a file is the old one or the new one as a whole.

#include "support/command_faults.h"
#include "support/tag_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QStringList names = {u"a.mp3"_s, u"b.mp3"_s};

TagBuilder titled()
{
    return TagBuilder().frame("TIT2", zeros(1) + "Song").audio("music");
}

const QByteArray plainFile = titled().file();
const QByteArray cuedFile = titled().object("Serato Markers2").object("Serato BeatGrid").file();
const QByteArray gainedFile = titled().userText("REPLAYGAIN_TRACK_GAIN", "-2.50 dB").file();

QByteArray database(const QString &folder)
{
    QByteArray bytes = databaseVersion();
    for (const QString &name : names)
        bytes += trackRecord({textRecord("pfil", musicPath(folder, name)), record("zzzz", "kept")});
    return bytes;
}

void fillWith(const QString &folder, const QByteArray &file)
{
    put(databaseFile(folder), database(folder));
    for (const QString &name : names)
        put(musicFile(folder, name), file);
}

/// The vault holds the cues of both files, and both have lost them since.
void loseCues(UserProcess &user)
{
    for (const QString &name : names)
        put(musicFile(user.folder(), name), plainFile);
}

/// Each of the files is the plain one, or what the command makes of it.
std::function<Outcomes(const QString &)> plainOr(const QByteArray &changed,
                                                 const QStringList &which)
{
    return [=](const QString &folder) {
        Outcomes outcomes{{database(folder)}};
        for (const QString &name : names)
            outcomes.audio[name] = {plainFile, which.contains(name) ? changed : plainFile};
        return outcomes;
    };
}

/// Whether an entry's file holds what it is said to hold.
std::function<bool(const QString &, const ChangeEntry &)> fileIs(const QByteArray &changed)
{
    return [=](const QString &folder, const ChangeEntry &entry) {
        return contentOf(musicFile(folder, entry.target)) == changed;
    };
}

QList<CommandCase> commands()
{
    const auto fillPlain = [](const QString &folder) { fillWith(folder, plainFile); };
    const auto fillCued = [](const QString &folder) { fillWith(folder, cuedFile); };
    return {
        {.name = u"gain"_s,
         .fill = fillPlain,
         .command =
             [](UserProcess &user) { user.app().normalizeLoudness(*user.track(u"a.mp3"_s), -2.5); },
         .outcomes = plainOr(gainedFile, {u"a.mp3"_s}),
         .isTrue = fileIs(gainedFile)},
        {.name = u"gains"_s,
         .fill = fillPlain,
         .command =
             [](UserProcess &user) {
                 user.app().normalizeAllLoudness(
                     {{*user.track(u"a.mp3"_s), -2.5}, {*user.track(u"b.mp3"_s), -2.5}});
             },
         .outcomes = plainOr(gainedFile, names),
         .isTrue = fileIs(gainedFile)},
        {.name = u"cues"_s,
         .fill = fillCued,
         .earlier = loseCues,
         .command =
             [](UserProcess &user) { user.app().restoreCues(user.app().cueLosses().constFirst()); },
         .outcomes = plainOr(cuedFile, {u"a.mp3"_s}),
         .isTrue = fileIs(cuedFile)},
        {.name = u"all cues"_s,
         .fill = fillCued,
         .earlier = loseCues,
         .command = [](UserProcess &user) { user.app().restoreAllCues(); },
         .outcomes = plainOr(cuedFile, names),
         .isTrue = fileIs(cuedFile)},
    };
}

QList<Interruption> cases()
{
    return interruptionsOf(commands());
}

} // namespace

class AudioCommandFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavesWholeFilesWhateverCallFails_data() { addRows(cases()); }
    void leavesWholeFilesWhateverCallFails()
    {
        QFETCH(const int, index);
        checkAtEachCall(cases().at(index), 40);
    }
};

TARNWICK_FAULT_LOOP_MAIN(AudioCommandFaultsTest, cases)
#include "audio_command_faults_test.moc"
