#include "platform/files_write.h"
#include "support/fault_loop.h"
#include "support/other_file_system.h"
#include "support/test_files.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace tarnwick::platform;
using namespace Qt::StringLiterals;

namespace {

const QByteArray audio(400'000, 'a');

QString source(const QString &folder)
{
    return folder + u"/from/a.mp3"_s;
}

QString destination(const QString &folder)
{
    return folder + u"/to/a.mp3"_s;
}

void prepareWithin(const QString &folder)
{
    put(source(folder), audio);
    QDir().mkpath(folder + u"/to"_s);
}

void prepareAcross(const QString &folder)
{
    put(source(folder), audio);
    linkToOtherFileSystem(folder + u"/to"_s);
}

void move(const QString &folder)
{
    (void)moveWithoutReplacing(source(folder), destination(folder));
}

/// Nothing, half or all of the audio at a path.
QString stateOf(const QString &path)
{
    const QByteArray content = contentOf(path);
    return content == audio ? u"whole"_s : content == "(none)" ? u"none"_s : u"damaged"_s;
}

/// The audio must be whole at one of the places, and damaged at none.
QString troubleWith(const QString &folder)
{
    const QStringList states = {stateOf(source(folder)), stateOf(destination(folder))};
    const bool good = states.contains(u"whole"_s) && !states.contains(u"damaged"_s);
    return good ? QString() : u"source and destination: "_s + states.join(u", "_s);
}

/// As above, and what is still at its place has no copy elsewhere.
QString troubleAfterFailure(const QString &folder)
{
    const QStringList left = namesIn(folder + u"/to"_s);
    if (stateOf(source(folder)) == u"whole"_s && !left.isEmpty())
        return u"a failed move left "_s + left.join(u'|');
    return troubleWith(folder);
}

QList<Interruption> cases()
{
    return {{u"within one file system"_s, prepareWithin, move, troubleWith},
            {u"across file systems"_s, prepareAcross, move, troubleWith}};
}

} // namespace

class MoveItemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void movesWithinOneFileSystem_data();
    void movesWithinOneFileSystem();
    void neverOverwrites_data();
    void neverOverwrites();
    void tellsWhyAMoveFailed_data();
    void tellsWhyAMoveFailed();
    void movesWhereARenameAlwaysReplaces_data();
    void movesWhereARenameAlwaysReplaces();
    void takesItsReservationBack();
    void movesAcrossFileSystems();
    void movesALinkAcrossFileSystems();
    void takesNoFolderAcrossFileSystems();
    void overwritesAStaleCopy();
    void leavesAFolderOfTheCopysNameAlone();
    void failsWhereTheCopysNameGrowsTooLong();
    void noticesACopyThatIsTooShort();
    void leavesNoCopyWhereTheSourceStays();
    void leavesTheCopyWhereTheSourceHasGone();
    void losesNothingWhateverCallFails_data();
    void losesNothingWhateverCallFails();

private:
    QString root() const { return m_folder->path(); }
    QString path(const QString &name) const { return m_folder->filePath(name); }
    bool hasSecondFileSystem() const { return linkToOtherFileSystem(path(u"to"_s)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void MoveItemTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void MoveItemTest::movesWithinOneFileSystem_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"file", "folder", "link", "dangling link"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void MoveItemTest::movesWithinOneFileSystem()
{
    QFETCH(QString, name);
    put(path(u"from/file"_s), "f");
    put(path(u"from/folder/inside"_s), "i");
    QFile::link(u"file"_s, path(u"from/link"_s));
    QFile::link(u"nowhere"_s, path(u"from/dangling link"_s));
    QDir().mkpath(path(u"to"_s));
    const auto before = treeOf(path(u"from"_s));
    QVERIFY(moveWithoutReplacing(path(u"from/"_s + name), path(u"to/"_s + name)));
    auto all = treeOf(path(u"from"_s));
    QVERIFY(all.size() < before.size());
    all.insert(treeOf(path(u"to"_s)));
    QCOMPARE(all, before);
}

void MoveItemTest::neverOverwrites_data()
{
    QTest::addColumn<bool>("across");
    QTest::addColumn<QString>("occupant");
    for (const bool across : {false, true}) {
        for (const char *occupant : {"file", "folder", "dangling link"})
            QTest::addRow("%s, %s", occupant, across ? "across" : "within")
                << across << QString::fromLatin1(occupant);
    }
}

void MoveItemTest::neverOverwrites()
{
    QFETCH(bool, across);
    QFETCH(QString, occupant);
    if (across && !hasSecondFileSystem())
        QSKIP("no second file system");
    put(source(root()), audio);
    QDir().mkpath(path(u"to"_s));
    if (occupant == u"file"_s)
        put(destination(root()), "occupied");
    else if (occupant == u"folder"_s)
        QDir().mkpath(destination(root()));
    else
        QFile::link(u"nowhere"_s, destination(root()));
    const auto before = treeOf(path(u"to/"_s));
    const Done done = moveWithoutReplacing(source(root()), destination(root()));
    QVERIFY(!done);
    QCOMPARE(done.error().message, u"The file “a.mp3” couldn't be moved: File exists."_s);
    QCOMPARE(stateOf(source(root())), u"whole"_s);
    QCOMPARE(treeOf(path(u"to/"_s)), before);
}

void MoveItemTest::tellsWhyAMoveFailed_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    const QString nul{QChar(0)};
    QTest::newRow("no source") << u"none"_s << u"to"_s;
    QTest::newRow("no folder") << u"from/a.mp3"_s << u"none/a.mp3"_s;
    QTest::newRow("onto itself") << u"from/a.mp3"_s << u"from/a.mp3"_s;
    QTest::newRow("NUL in the source") << u"from/a.mp3"_s + nul << u"to"_s;
    QTest::newRow("NUL in the destination") << u"from/a.mp3"_s << u"to"_s + nul;
}

void MoveItemTest::tellsWhyAMoveFailed()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    put(source(root()), audio);
    const Done done = moveWithoutReplacing(path(from), path(to));
    QVERIFY(!done);
    QVERIFY(done.error().message.contains(u"couldn't be moved: "_s));
    QCOMPARE(stateOf(source(root())), u"whole"_s);
    QCOMPARE(namesIn(root()), QStringList{u"from"_s});
}

void MoveItemTest::movesWhereARenameAlwaysReplaces_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("occupied");
    for (const char *name : {"file", "folder", "link"}) {
        QTest::addRow("%s", name) << QString::fromLatin1(name) << false;
        QTest::addRow("%s, occupied", name) << QString::fromLatin1(name) << true;
    }
}

void MoveItemTest::movesWhereARenameAlwaysReplaces()
{
    QFETCH(QString, name);
    QFETCH(bool, occupied);
    put(path(u"file"_s), "f");
    put(path(u"folder/inside"_s), "i");
    QFile::link(u"nowhere"_s, path(u"link"_s));
    if (occupied)
        put(path(u"to"_s), "occupied");
    const auto before = treeOf(root());
    bool isFirst = true;
    const ScopedFaults faults([&isFirst](FileOperation operation, const QString &) {
        return operation == FileOperation::Rename && std::exchange(isFirst, false) ? EINVAL : 0;
    });
    QCOMPARE(moveWithoutReplacing(path(name), path(u"to"_s)).has_value(), !occupied);
    if (occupied)
        QCOMPARE(treeOf(root()), before);
    else
        QVERIFY(!namesIn(root()).contains(name) && namesIn(root()).contains(u"to"_s));
}

void MoveItemTest::takesItsReservationBack()
{
    put(path(u"file"_s), "f");
    put(path(u"folder/inside"_s), "i");
    const auto before = treeOf(root());
    for (const char *name : {"file", "folder"}) {
        int renames = 0;
        const ScopedFaults faults([&renames](FileOperation operation, const QString &) {
            return operation != FileOperation::Rename ? 0 : renames++ == 0 ? ENOSYS : EIO;
        });
        QVERIFY(!moveWithoutReplacing(path(QString::fromLatin1(name)), path(u"to"_s)));
        QCOMPARE(renames, 2);
        QCOMPARE(treeOf(root()), before);
    }
}

void MoveItemTest::movesAcrossFileSystems()
{
    if (!hasSecondFileSystem())
        QSKIP("no second file system");
    put(source(root()), audio);
    const QByteArray from = QFile::encodeName(source(root()));
    ::chmod(from.constData(), 0604);
    const timespec times[] = {{1'600'000'000, 0}, {1'500'000'000, 0}};
    ::utimensat(AT_FDCWD, from.constData(), times, 0);

    QVERIFY(moveWithoutReplacing(source(root()), destination(root())));
    QCOMPARE(stateOf(destination(root())), u"whole"_s);
    QCOMPARE(namesIn(path(u"to/"_s)), QStringList{u"a.mp3"_s});
    QCOMPARE(namesIn(path(u"from"_s)), QStringList());
    QCOMPARE(modeOf(destination(root())), 0604);
    QCOMPARE(QFileInfo(destination(root())).lastModified().toSecsSinceEpoch(), 1'500'000'000);
    QVERIFY(moveWithoutReplacing(destination(root()), source(root())));
    QCOMPARE(stateOf(source(root())), u"whole"_s);
    QCOMPARE(namesIn(path(u"to/"_s)), QStringList());
}

void MoveItemTest::movesALinkAcrossFileSystems()
{
    if (!hasSecondFileSystem())
        QSKIP("no second file system");
    put(path(u"real.mp3"_s), audio);
    QDir().mkpath(path(u"from"_s));
    QFile::link(path(u"real.mp3"_s), source(root()));
    QVERIFY(moveWithoutReplacing(source(root()), destination(root())));
    QVERIFY(QFileInfo(destination(root())).isSymLink());
    QCOMPARE(stateOf(destination(root())), u"whole"_s);
    QCOMPARE(namesIn(path(u"from"_s)), QStringList());
}

void MoveItemTest::takesNoFolderAcrossFileSystems()
{
    if (!hasSecondFileSystem())
        QSKIP("no second file system");
    put(path(u"from/folder/inside"_s), "i");
    QVERIFY(!moveWithoutReplacing(path(u"from/folder"_s), path(u"to/folder"_s)));
    QCOMPARE(contentOf(path(u"from/folder/inside"_s)), QByteArray("i"));
    QCOMPARE(namesIn(path(u"to/"_s)), QStringList());
}

void MoveItemTest::overwritesAStaleCopy()
{
    if (!hasSecondFileSystem())
        QSKIP("no second file system");
    put(source(root()), audio);
    put(path(u"to/.a.mp3.twtmp"_s), QByteArray(900'000, 's'));
    QVERIFY(moveWithoutReplacing(source(root()), destination(root())));
    QCOMPARE(stateOf(destination(root())), u"whole"_s);
    QCOMPARE(namesIn(path(u"to/"_s)), QStringList{u"a.mp3"_s});
}

void MoveItemTest::leavesAFolderOfTheCopysNameAlone()
{
    if (!hasSecondFileSystem())
        QSKIP("no second file system");
    put(source(root()), audio);
    put(path(u"to/.a.mp3.twtmp/inside"_s), "kept");
    QVERIFY(!moveWithoutReplacing(source(root()), destination(root())));
    QCOMPARE(stateOf(source(root())), u"whole"_s);
    QCOMPARE(contentOf(path(u"to/.a.mp3.twtmp/inside"_s)), QByteArray("kept"));
}

void MoveItemTest::failsWhereTheCopysNameGrowsTooLong()
{
    if (!hasSecondFileSystem())
        QSKIP("no second file system");
    const QString name(249, u'a');
    put(path(u"from/"_s + name), audio);
    const Done done = moveWithoutReplacing(path(u"from/"_s + name), path(u"to/"_s + name));
    QVERIFY(!done);
    QVERIFY(done.error().message.endsWith(u"couldn't be moved: File name too long."_s));
    QCOMPARE(stateOf(path(u"from/"_s + name)), u"whole"_s);
}

void MoveItemTest::noticesACopyThatIsTooShort()
{
    if (!hasSecondFileSystem())
        QSKIP("no second file system");
    put(source(root()), audio);
    const ScopedFaults faults([this](FileOperation operation, const QString &asked) {
        // The copy loses bytes behind the mover's back, ahead of the flush.
        if (operation == FileOperation::Flush && asked.endsWith(u".twtmp"_s))
            QFile(path(u"to/.a.mp3.twtmp"_s)).resize(10);
        return 0;
    });
    QVERIFY(!moveWithoutReplacing(source(root()), destination(root())));
    QCOMPARE(stateOf(source(root())), u"whole"_s);
    QCOMPARE(namesIn(path(u"to/"_s)), QStringList());
}

void MoveItemTest::leavesNoCopyWhereTheSourceStays()
{
    if (!hasSecondFileSystem())
        QSKIP("no second file system");
    put(source(root()), audio);
    const ScopedFaults faults([](FileOperation operation, const QString &asked) {
        return operation == FileOperation::Remove && asked.contains(u"/from/"_s) ? EACCES : 0;
    });
    QVERIFY(!moveWithoutReplacing(source(root()), destination(root())));
    QCOMPARE(stateOf(source(root())), u"whole"_s);
    QCOMPARE(namesIn(path(u"to/"_s)), QStringList());
}

void MoveItemTest::leavesTheCopyWhereTheSourceHasGone()
{
    if (!hasSecondFileSystem())
        QSKIP("no second file system");
    put(source(root()), audio);
    const ScopedFaults faults([this](FileOperation operation, const QString &asked) {
        if (operation == FileOperation::Flush && asked.contains(u"/to/"_s))
            QFile::remove(source(root()));
        return 0;
    });
    QVERIFY(!moveWithoutReplacing(source(root()), destination(root())));
    QCOMPARE(namesIn(path(u"to/"_s)).size(), 1);
    QCOMPARE(contentOf(path(u"to/"_s + namesIn(path(u"to/"_s)).first())), audio);
}

void MoveItemTest::losesNothingWhateverCallFails_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("leastCalls");
    QTest::newRow("within one file system") << 0 << 1;
    QTest::newRow("across file systems") << 1 << 12;
}

void MoveItemTest::losesNothingWhateverCallFails()
{
    QFETCH(int, index);
    QFETCH(int, leastCalls);
    if (index == 1 && !hasSecondFileSystem())
        QSKIP("no second file system");
    Interruption what = cases().at(index);
    const FaultReport killed = killAtEachCall(what);
    QVERIFY2(killed.trouble.isEmpty(), qPrintable(killed.trouble));
    QVERIFY(killed.calls >= leastCalls);
    what.trouble = troubleAfterFailure;
    for (const int error : {EIO, ENOSPC, EINVAL}) {
        const FaultReport failed = failAtEachCall(what, error);
        QVERIFY2(failed.trouble.isEmpty(), qPrintable(failed.trouble));
        QVERIFY(failed.calls >= leastCalls);
    }
}

TARNWICK_FAULT_LOOP_MAIN(MoveItemTest, cases)
#include "move_item_test.moc"
