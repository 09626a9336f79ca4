// Held files under faults: whichever call of the system fails, and wherever the process is killed,
// a file is whole in its place or whole in holding.

#include "support/fault_loop.h"
#include "support/other_file_system.h"
#include "support/safety_records.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QDateTime noon({2026, 11, 20}, {12, 0}, Qt::UTC);
const QByteArray audio(200'000, 'a');

QString musicIn(const QString &folder)
{
    return folder + u"/music/a.mp3"_s;
}

/// Where the file is whole: "place", "holding" or both; "nowhere" or "damaged" if it isn't.
QString whereabouts(const QString &folder)
{
    QStringList places;
    const QByteArray inPlace = contentOf(musicIn(folder));
    if (inPlace == audio)
        places << u"place"_s;
    else if (inPlace != "(none)")
        return u"damaged"_s;
    for (const auto &[name, content] : treeOf(dataIn(folder, u"Holding"_s)).toStdMap()) {
        if (!name.endsWith(u"/a.mp3"_s))
            continue;
        if (content != audio)
            return u"damaged"_s;
        places << u"holding"_s;
    }
    return places.isEmpty() ? u"nowhere"_s : places.join(u" and "_s);
}

QString troubleOf(const QString &folder, const QStringList &allowed)
{
    const QString found = whereabouts(folder);
    return allowed.contains(found) ? QString() : found;
}

void prepareMusic(const QString &folder)
{
    keepDataIn(folder);
    put(musicIn(folder), audio);
}

void prepareHeld(const QString &folder)
{
    prepareMusic(folder);
    const platform::ScopedClock clock(noon);
    HoldingFolder holding;
    if (!holding.hold(musicIn(folder), u"test"_s))
        qFatal("can't hold");
}

/// The music lies on another file system than the data folder.
void prepareMusicAcross(const QString &folder)
{
    linkToOtherFileSystem(folder + u"/music"_s);
    prepareMusic(folder);
}

void prepareHeldAcross(const QString &folder)
{
    linkToOtherFileSystem(folder + u"/music"_s);
    prepareHeld(folder);
}

void hold(const QString &folder)
{
    keepDataIn(folder);
    HoldingFolder holding;
    (void)holding.hold(musicIn(folder), u"test"_s);
}

void giveBack(const QString &folder)
{
    keepDataIn(folder);
    HoldingFolder holding;
    if (!holding.items().isEmpty())
        (void)holding.restore(holding.items().first().id);
}

void purgeAt(const QString &folder, const QDateTime &moment)
{
    keepDataIn(folder);
    HoldingFolder().purgeExpired(moment);
}

QList<Interruption> cases()
{
    // Killed between the copy's arrival and the source's removal, a move leaves both.
    const auto wholeSomewhere = [](const QString &folder) {
        return troubleOf(folder, {u"place"_s, u"holding"_s, u"place and holding"_s});
    };
    return {{u"hold"_s, prepareMusic, hold, wholeSomewhere},
            {u"give back"_s, prepareHeld, giveBack, wholeSomewhere},
            {u"hold across file systems"_s, prepareMusicAcross, hold, wholeSomewhere},
            {u"give back across file systems"_s, prepareHeldAcross, giveBack, wholeSomewhere},
            {u"purge too early"_s, prepareHeld,
             [](const QString &folder) { purgeAt(folder, noon.addDays(29)); }, wholeSomewhere},
            {u"purge"_s, prepareHeld,
             [](const QString &folder) { purgeAt(folder, noon.addDays(30)); },
             [](const QString &folder) {
                 return troubleOf(folder, {u"holding"_s, u"nowhere"_s});
             }}};
}

} // namespace

class HoldingFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void tellsTheTruthWhateverCallFails_data();
    void tellsTheTruthWhateverCallFails();
    void losesNothingWhateverCallFails_data();
    void losesNothingWhateverCallFails();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString held() const { return dataIn(m_folder->path(), u"Holding"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void HoldingFaultsTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    keepDataIn(m_folder->path());
}

void HoldingFaultsTest::tellsTheTruthWhateverCallFails_data()
{
    QTest::addColumn<bool>("isAcross");
    QTest::newRow("within a file system") << false;
    QTest::newRow("across file systems") << true;
}

/// A move that fails leaves no copy, and what is reported is what happened.
void HoldingFaultsTest::tellsTheTruthWhateverCallFails()
{
    QFETCH(bool, isAcross);
    if (isAcross && !linkToOtherFileSystem(path(u"music"_s)))
        QSKIP("no second file system");
    const QString root = m_folder->path();
    int calls = 0;
    int failing = 0;
    const auto hook = [&](platform::FileOperation, const QString &) {
        return ++calls == failing ? EIO : 0;
    };
    do {
        calls = 0;
        ++failing;
        put(musicIn(root), audio);
        QDir(held()).removeRecursively();
        HoldingFolder holding;
        const auto item = [&] {
            const platform::ScopedFaults faults(hook);
            return holding.hold(musicIn(root), u"r"_s);
        }();
        QCOMPARE(whereabouts(root), item ? u"holding"_s : u"place"_s);
        QCOMPARE(holding.items(), item ? QList<HeldItem>{*item} : QList<HeldItem>());
        QVERIFY(item || namesIn(held()).isEmpty());
    } while (calls >= failing);
    QVERIFY(failing > (isAcross ? 20 : 6));

    put(musicIn(root), audio);
    QDir(held()).removeRecursively();
    HoldingFolder holding;
    failing = 0;
    do {
        const auto item = holding.hold(musicIn(root), u"r"_s);
        QVERIFY(item.has_value());
        const Done done = [&] {
            calls = 0;
            ++failing;
            const platform::ScopedFaults faults(hook);
            return holding.restore(item->id);
        }();
        QCOMPARE(whereabouts(root), done ? u"place"_s : u"holding"_s);
        QCOMPARE(holding.items().first().restored, done.has_value());
        QVERIFY(holding.restore(item->id));
    } while (calls >= failing);
    QVERIFY(failing > (isAcross ? 20 : 6));
}

void HoldingFaultsTest::losesNothingWhateverCallFails_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("leastCalls");
    QTest::addColumn<bool>("isAcross");
    QTest::newRow("hold") << 0 << 7 << false;
    QTest::newRow("give back") << 1 << 7 << false;
    QTest::newRow("hold across file systems") << 2 << 20 << true;
    QTest::newRow("give back across file systems") << 3 << 20 << true;
    QTest::newRow("purge too early") << 4 << 5 << false;
    QTest::newRow("purge") << 5 << 9 << false;
}

void HoldingFaultsTest::losesNothingWhateverCallFails()
{
    QFETCH(int, index);
    QFETCH(int, leastCalls);
    QFETCH(bool, isAcross);
    if (isAcross && !linkToOtherFileSystem(path(u"music"_s)))
        QSKIP("no second file system");
    const Interruption what = cases().at(index);
    for (const FaultReport &report : interruptInEveryWay(what)) {
        QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
        QVERIFY2(report.calls >= leastCalls, qPrintable(QString::number(report.calls)));
    }
}

TARNWICK_FAULT_LOOP_MAIN(HoldingFaultsTest, cases)
#include "holding_faults_test.moc"
