// Changes that one process made are taken back by another: this test's own executable, started once
// more.

#include "support/test_files.h"
#include "support/test_folder.h"
#include "support/user_process.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray song(const TestFolder &folder, const QString &name, QStringView title, QStringView genre,
                bool isMissing = false)
{
    return trackRecord({record("zzzz", "kept"), textRecord("pfil", musicPath(folder.path(), name)),
                        textRecord("tsng", title), textRecord("tgen", genre),
                        flagRecord("bmis", isMissing)});
}

/// The life of the second process: undoes the newest change, or everything.
int undoIn(const QString &folder, const QString &what)
{
    UserProcess user(folder);
    if (what == u"newest"_s)
        user.app().undo(user.app().changeLog().entries().value(0));
    else
        user.app().undoEverything();
    return user.app().toast() ? 0 : 1;
}

int undoElsewhere(const TestFolder &folder, const QString &what)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QCoreApplication::applicationFilePath(), {u"--undo"_s, what, folder.path()});
    return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit
               ? process.exitCode()
               : -1;
}

/// How many entries of the log are marked as undone, and how many there are.
QString undone(const TestFolder &folder)
{
    UserProcess user(folder.path());
    int marked = 0;
    for (const ChangeEntry &entry : user.app().changeLog().entries())
        marked += entry.reversed ? 1 : 0;
    return u"%1 of %2"_s.arg(marked).arg(user.app().changeLog().entries().size());
}

} // namespace

class UndoAfterRestartTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<TestFolder>(); }

    void aDuplicateComesBackInTheNextProcess()
    {
        const QByteArray best = song(*m_folder, u"best.mp3"_s, u"Song", u"Pop");
        const QByteArray copy = song(*m_folder, u"copy.mp3"_s, u"Song", u"Pop");
        fill(best + copy, {{u"best.mp3"_s, "the best copy"}, {u"copy.mp3"_s, "a copy"}});
        const auto before = treeOf(m_folder->path(u"home"_s));
        resolveDuplicates();
        QVERIFY(treeOf(m_folder->path(u"home"_s)) != before);
        QCOMPARE(undoElsewhere(*m_folder, u"newest"_s), 0);
        QCOMPARE(treeOf(m_folder->path(u"home"_s)), before);
        QCOMPARE(undone(*m_folder), u"1 of 1"_s);
    }

    void everythingComesBackInTheNextProcess()
    {
        const QByteArray gone = song(*m_folder, u"gone.mp3"_s, u"Gone", u"Pop", true);
        const QByteArray best = song(*m_folder, u"best.mp3"_s, u"Song", u"Pop");
        const QByteArray copy = song(*m_folder, u"copy.mp3"_s, u"Song", u"Pop");
        const QByteArray dead = song(*m_folder, u"dead.mp3"_s, u"Dead", u"Pop");
        fill(gone + best + copy + dead, {{u"best.mp3"_s, "the best copy"},
                                         {u"copy.mp3"_s, "a copy"},
                                         {u"found.mp3"_s, "found"}});
        const auto before = treeOf(m_folder->path(u"home"_s));
        {
            UserProcess user(m_folder->path());
            user.app().relink(*user.track(u"gone.mp3"_s),
                              QUrl::fromLocalFile(musicFile(m_folder->path(), u"found.mp3"_s)));
            user.app().setGenreBatch(user.app().result()->tracks, u"House"_s);
        }
        resolveDuplicates();
        {
            UserProcess user(m_folder->path());
            user.app().dropFromLibrary(*user.track(u"dead.mp3"_s));
        }
        QCOMPARE(undone(*m_folder), u"0 of 7"_s);
        QCOMPARE(undoElsewhere(*m_folder, u"everything"_s), 0);
        QCOMPARE(undone(*m_folder), u"7 of 7"_s);
        // Records that were taken out come back behind all others; the rest is as it was.
        auto wanted = before;
        wanted[u"Music/_Serato_/database V2"_s] = databaseVersion() + gone + best + dead + copy;
        QCOMPARE(treeOf(m_folder->path(u"home"_s)), wanted);
    }

private:
    void fill(const QByteArray &tracks, const QMap<QString, QByteArray> &files)
    {
        put(databaseFile(m_folder->path()), databaseVersion() + tracks);
        for (const auto &[name, content] : files.toStdMap())
            put(musicFile(m_folder->path(), name), content);
    }
    void resolveDuplicates()
    {
        UserProcess user(m_folder->path());
        const DuplicateGroup group = user.app().derived()->duplicateGroups.front();
        user.app().resolveDuplicates(group, user.track(u"best.mp3"_s)->id());
    }

    std::unique_ptr<TestFolder> m_folder;
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"--undo"_s)
        return undoIn(arguments.value(3), arguments.value(2));
    UndoAfterRestartTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "undo_after_restart_test.moc"
