#include "safety/change_log.h"

#include "platform/fault_gate.h"
#include "support/fault_loop.h"
#include "support/safety_records.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <thread>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

using Kind = ChangeEntry::Kind;

const QDateTime noon({2026, 11, 20}, {12, 0}, Qt::UTC);

ChangeLog::Change relink(const QString &target = u"a.mp3"_s)
{
    return {.kind = Kind::Relink, .target = target, .detail = u"Relinked"_s};
}

QString targetsIn(const QString &folder)
{
    keepDataIn(folder);
    QStringList targets;
    const ChangeLog log;
    for (const ChangeEntry &entry : log.entries())
        targets << entry.target + (entry.reversed ? u"!"_s : u""_s);
    return targets.join(u' ');
}

void prepareLog(const QString &folder)
{
    keepDataIn(folder);
    ChangeLog log;
    (void)log.append(relink(u"first"_s));
    (void)log.append(relink(u"second"_s));
}

void appendThird(const QString &folder)
{
    keepDataIn(folder);
    (void)ChangeLog().append(relink(u"third"_s));
}

void reverseNewest(const QString &folder)
{
    keepDataIn(folder);
    ChangeLog log;
    if (!log.entries().isEmpty())
        (void)log.markReversed(log.entries().first().id);
}

/// The old log, the new one, or what becomes of one that can't be read: never anything else.
QList<Interruption> cases()
{
    const auto oneOf = [](const QStringList &allowed) {
        return [allowed](const QString &folder) {
            const QString found = targetsIn(folder);
            return allowed.contains(found) ? QString() : u"the log holds "_s + found;
        };
    };
    return {{u"append"_s, prepareLog, appendThird,
             oneOf({u"second first"_s, u"third second first"_s, u""_s, u"third"_s})},
            {u"mark as reversed"_s, prepareLog, reverseNewest,
             oneOf({u"second first"_s, u"second! first"_s, u""_s})}};
}

ChangeLog::Change snapshotTaken()
{
    return {.kind = Kind::Snapshot, .target = u"/lib"_s, .detail = u"x"_s, .reversibleDays = {}};
}

} // namespace

class ChangeLogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void startsEmptyWithoutAFile();
    void appendsAtTheFrontAndWritesAll();
    void keepsEveryValueGiven();
    void numbersTwoEntriesOfOneSecond();
    void givesAWindowOfCalendarDays_data();
    void givesAWindowOfCalendarDays();
    void marksAnEntryAsReversed();
    void marksTheFirstOfEqualIds();
    void writesNothingForAnUnknownId();
    void countsChangesAndActiveOnes();
    void neverCountsADeletedFile();
    void readsBackWhatItWrote();
    void startsEmptyFromABadFileAndLeavesItUntilTheNextWrite_data();
    void startsEmptyFromABadFileAndLeavesItUntilTheNextWrite();
    void treatsAnEmptyListLikeNoFile();
    void takesInALogThatCouldNotBeReadAtFirst();
    void staysAheadOfADiskThatFails();
    void catchesUpWhateverCallFails();
    void isOldOrNewOrEmptyWhateverCallFails();
    void writesTheSameBytesWhetherReadOrNot();
    void losesNothingOfAnothers();
    void takesNothingInFromABadFile();
    void canBeWaitedForOnAnyThread();

private:
    QString file() const { return dataIn(m_folder->path(), u"changelog.json"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void ChangeLogTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    keepDataIn(m_folder->path());
    qputenv("TZ", "UTC");
    ::tzset();
}

void ChangeLogTest::startsEmptyWithoutAFile()
{
    const ChangeLog log;
    QCOMPARE(log.entries().size(), 0);
    QVERIFY(log.isLoaded());
    QVERIFY(!QFileInfo::exists(file()));
}

void ChangeLogTest::appendsAtTheFrontAndWritesAll()
{
    platform::ScopedClock clock(noon.addMSecs(999));
    ChangeLog log;
    const ChangeEntry first = log.append(relink(u"first"_s));
    QCOMPARE(contentOf(file()), QByteArray("[\n"
                                           "  {\n"
                                           "    \"date\": \"2026-11-20T12:00:00Z\",\n"
                                           "    \"detail\": \"Relinked\",\n"
                                           "    \"id\": \"chg-1-1795176000\",\n"
                                           "    \"kind\": \"relink\",\n"
                                           "    \"reversed\": false,\n"
                                           "    \"reversibleUntil\": \"2026-12-20T12:00:00Z\",\n"
                                           "    \"target\": \"first\"\n"
                                           "  }\n"
                                           "]\n"));
    clock.set(noon.addDays(-3));
    const ChangeEntry second = log.append(relink(u"second"_s));
    QCOMPARE(log.entries(), (QList<ChangeEntry>{second, first}));
}

void ChangeLogTest::keepsEveryValueGiven()
{
    ChangeLog log;
    const ChangeEntry entry = log.append({.kind = Kind::Dedupe,
                                          .target = u"t"_s,
                                          .detail = u"d"_s,
                                          .before = u"b"_s,
                                          .after = u"a"_s,
                                          .reversibleDays = 7,
                                          .snapshotId = u"s"_s,
                                          .holdingId = u"h"_s});
    QCOMPARE(entry, log.entries().first());
    QCOMPARE(entry.kind, Kind::Dedupe);
    QCOMPARE(entry.target, u"t"_s);
    QCOMPARE(entry.detail, u"d"_s);
    QCOMPARE(entry.before, std::optional(u"b"_s));
    QCOMPARE(entry.after, std::optional(u"a"_s));
    QCOMPARE(entry.reversibleUntil, std::optional(entry.date.addDays(7)));
    QCOMPARE(entry.snapshotId, std::optional(u"s"_s));
    QCOMPARE(entry.holdingId, std::optional(u"h"_s));
    QVERIFY(!entry.reversed);
}

void ChangeLogTest::numbersTwoEntriesOfOneSecond()
{
    const platform::ScopedClock clock(noon);
    ChangeLog log;
    QCOMPARE(log.append(relink()).id, u"chg-1-1795176000"_s);
    QCOMPARE(log.append(snapshotTaken()).id, u"chg-2-1795176000"_s);
}

void ChangeLogTest::givesAWindowOfCalendarDays_data()
{
    QTest::addColumn<std::optional<int>>("days");
    QTest::addColumn<QDateTime>("from");
    QTest::addColumn<std::optional<QDateTime>>("until");
    const QDateTime march({2026, 3, 10}, {13, 0}, Qt::UTC);
    QTest::newRow("30 days") << std::optional(30) << noon << std::optional(noon.addDays(30));
    QTest::newRow("none") << std::optional<int>() << noon << std::optional<QDateTime>();
    QTest::newRow("no days") << std::optional(0) << noon << std::optional(noon);
    QTest::newRow("into summer time")
        << std::optional(30) << march << std::optional(march.addDays(30).addSecs(-3600));
}

void ChangeLogTest::givesAWindowOfCalendarDays()
{
    QFETCH(std::optional<int>, days);
    QFETCH(QDateTime, from);
    QFETCH(std::optional<QDateTime>, until);
    qputenv("TZ", "Europe/Berlin");
    ::tzset();
    const platform::ScopedClock clock(from);
    ChangeLog log;
    ChangeLog::Change change = relink();
    change.reversibleDays = days;
    const ChangeEntry entry = log.append(change);
    QCOMPARE(entry.reversibleUntil, until);
    QCOMPARE(contentOf(file()).contains("reversibleUntil"), until.has_value());
    QCOMPARE(entry.isReversible(), until && *until > from);
}

void ChangeLogTest::marksAnEntryAsReversed()
{
    ChangeLog log;
    const ChangeEntry first = log.append(relink(u"first"_s));
    const ChangeEntry second = log.append(relink(u"second"_s));
    ChangeEntry wanted = first;
    wanted.reversed = true;
    QCOMPARE(log.markReversed(first.id), std::optional(wanted));
    QCOMPARE(log.entries(), (QList<ChangeEntry>{second, wanted}));
    QCOMPARE(ChangeLog().entries(), log.entries());
    QCOMPARE(log.markReversed(first.id), std::optional(wanted));
}

void ChangeLogTest::marksTheFirstOfEqualIds()
{
    const platform::ScopedClock clock(noon);
    ChangeLog log;
    const QString id = log.append(relink(u"old"_s)).id;
    put(file(),
        QByteArray(contentOf(file())).replace("\n]", ",").append(contentOf(file()).sliced(1)));
    ChangeLog reloaded;
    QCOMPARE(reloaded.entries().size(), 2);
    QVERIFY(reloaded.markReversed(id));
    QVERIFY(reloaded.entries().at(0).reversed && !reloaded.entries().at(1).reversed);
}

void ChangeLogTest::writesNothingForAnUnknownId()
{
    ChangeLog log;
    (void)log.append(relink());
    QFile::remove(file());
    QCOMPARE(log.markReversed(u"chg-1"_s), std::optional<ChangeEntry>());
    QVERIFY(!QFileInfo::exists(file()));
}

void ChangeLogTest::countsChangesAndActiveOnes()
{
    ChangeLog log;
    for (int i = 0; i < 3; ++i)
        (void)log.append(snapshotTaken());
    const QString id = log.append(relink()).id;
    (void)log.append(relink());
    QCOMPARE(log.changeCount(), 2);
    QCOMPARE(log.activeCount(), 2);
    QVERIFY(log.markReversed(id));
    QCOMPARE(log.changeCount(), 2);
    QCOMPARE(log.activeCount(), 1);
}

void ChangeLogTest::neverCountsADeletedFile()
{
    static_assert(ChangeLog::filesDeleted == 0);
    ChangeLog log;
    (void)log.append({.kind = Kind::Dedupe, .target = u"t"_s, .detail = u"d"_s});
    QVERIFY(!contentOf(file()).contains("filesDeleted"));
    QCOMPARE(log.filesDeleted, 0);
}

void ChangeLogTest::readsBackWhatItWrote()
{
    ChangeLog log;
    for (int i = 0; i < 50; ++i)
        (void)log.append(i % 3 ? relink(u"“%1”\n\\"_s.arg(i)) : snapshotTaken());
    QCOMPARE(ChangeLog().entries(), log.entries());
}

void ChangeLogTest::startsEmptyFromABadFileAndLeavesItUntilTheNextWrite_data()
{
    QTest::addColumn<QByteArray>("bad");
    const QByteArray entry = R"({"date":"2026-11-20T12:00:00Z","detail":"d","id":"i","kind":"tag",)"
                             R"("reversed":false,"target":"t"})";
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("changes");
    QTest::newRow("an object") << entry;
    QTest::newRow("cut") << QByteArray("[" + entry);
    QTest::newRow("a kind that is not known")
        << QByteArray("[" + QByteArray(entry).replace("tag", "none") + "]");
    QTest::newRow("a text for a Boolean")
        << QByteArray("[" + QByteArray(entry).replace("false", "\"false\"") + "]");
    QTest::newRow("a date with a fraction")
        << QByteArray("[" + QByteArray(entry).replace("00Z", "00.5Z") + "]");
    QTest::newRow("a missing target")
        << QByteArray("[" + QByteArray(entry).replace(R"(,"target":"t")", "") + "]");
}

void ChangeLogTest::startsEmptyFromABadFileAndLeavesItUntilTheNextWrite()
{
    QFETCH(QByteArray, bad);
    put(file(), bad);
    ChangeLog log;
    QCOMPARE(log.entries().size(), 0);
    QCOMPARE(contentOf(file()), bad);
    const ChangeEntry entry = log.append(relink());
    QVERIFY(entry.id.startsWith(u"chg-1-"_s));
    QCOMPARE(ChangeLog().entries(), QList<ChangeEntry>{entry});
}

void ChangeLogTest::treatsAnEmptyListLikeNoFile()
{
    put(file(), "[]");
    ChangeLog log;
    QCOMPARE(log.entries().size(), 0);
    QVERIFY(log.append(relink()).id.startsWith(u"chg-1-"_s));
}

void ChangeLogTest::takesInALogThatCouldNotBeReadAtFirst()
{
    const ChangeEntry first = ChangeLog().append(relink(u"first"_s));
    std::optional<ChangeLog> log;
    {
        const platform::ScopedFaults faults([](platform::FileOperation operation, const QString &) {
            return operation == platform::FileOperation::Read ? EIO : 0;
        });
        log.emplace();
        QCOMPARE(log->entries().size(), 0);
    }
    const ChangeEntry second = log->append(relink(u"second"_s));
    QCOMPARE(ChangeLog().entries(), (QList<ChangeEntry>{second, first}));
}

void ChangeLogTest::staysAheadOfADiskThatFails()
{
    ChangeLog log;
    (void)log.append(relink(u"first"_s));
    {
        const platform::ScopedFaults faults(
            [](platform::FileOperation, const QString &) { return ENOSPC; });
        (void)log.append(relink(u"second"_s));
    }
    QCOMPARE(log.entries().size(), 2);
    QCOMPARE(ChangeLog().entries().size(), 1);
    (void)log.append(relink(u"third"_s));
    QCOMPARE(ChangeLog().entries(), log.entries());
}

void ChangeLogTest::catchesUpWhateverCallFails()
{
    ChangeLog log;
    int calls = 0;
    int failing = 0;
    do {
        calls = 0;
        ++failing;
        {
            const platform::ScopedFaults faults([&](platform::FileOperation, const QString &) {
                return ++calls == failing ? ENOSPC : 0;
            });
            (void)log.append(relink(QString::number(failing)));
        }
        QCOMPARE(log.entries().first().target, QString::number(failing));
        QVERIFY(log.markReversed(log.entries().first().id));
        QCOMPARE(ChangeLog().entries(), log.entries());
    } while (calls >= failing);
    QVERIFY(log.entries().size() >= 4);
}

void ChangeLogTest::isOldOrNewOrEmptyWhateverCallFails()
{
    for (const Interruption &what : cases()) {
        for (const FaultReport &report : interruptInEveryWay(what)) {
            QVERIFY2(report.trouble.isEmpty(), qPrintable(report.trouble));
            QVERIFY2(report.calls >= 6, qPrintable(QString::number(report.calls)));
        }
    }
}

void ChangeLogTest::canBeWaitedForOnAnyThread()
{
    QByteArrayList texts;
    for (int i = 0; i < 5000; ++i)
        texts << R"({"date":"2026-11-20T12:00:00Z","detail":"d","id":"i","kind":"tag",)"
                 R"("reversed":false,"target":"t"})";
    put(file(), '[' + texts.join(',') + ']');
    auto log = std::make_unique<ChangeLog>();
    const auto wait = log->waiting();
    std::thread waiter([&] { wait(); });
    waiter.join();
    QVERIFY(log->isLoaded());
    QCOMPARE(log->entries().size(), 5000);
    log.reset();
    wait();
}

void ChangeLogTest::writesTheSameBytesWhetherReadOrNot()
{
    const platform::ScopedClock clock(noon);
    ChangeLog log;
    (void)log.append(relink(u"first"_s));
    (void)log.append(relink(u"second"_s));
    const QByteArray two = contentOf(file());
    (void)log.append(relink(u"third"_s));
    const QByteArray bytes = contentOf(file());
    put(file(), two);
    ChangeLog reloaded;
    (void)reloaded.append(relink(u"third"_s));
    QCOMPARE(contentOf(file()), bytes);
}

void ChangeLogTest::losesNothingOfAnothers()
{
    const platform::ScopedClock clock(noon);
    ChangeLog one;
    ChangeLog other;
    const QString first = one.append(relink(u"first"_s)).id;
    const QString second = other.append(relink(u"second"_s)).id;
    QVERIFY(first != second);
    QCOMPARE(targetsIn(m_folder->path()), u"second first"_s);
    (void)one.append(relink(u"third"_s));
    (void)other.append(relink(u"fourth"_s));
    QCOMPARE(targetsIn(m_folder->path()), u"fourth third second first"_s);
    QVERIFY(one.markReversed(first));
    (void)other.append(relink(u"fifth"_s));
    QCOMPARE(targetsIn(m_folder->path()), u"fifth fourth third second first!"_s);
    QVERIFY(one.markReversed(second));
    QCOMPARE(targetsIn(m_folder->path()), u"fifth fourth third second! first!"_s);
    QCOMPARE(one.entries(), ChangeLog().entries());
}

void ChangeLogTest::takesNothingInFromABadFile()
{
    ChangeLog log;
    (void)log.append(relink(u"first"_s));
    put(file(), contentOf(file()).chopped(3));
    (void)log.append(relink(u"second"_s));
    QCOMPARE(targetsIn(m_folder->path()), u"second first"_s);
}

TARNWICK_FAULT_LOOP_MAIN(ChangeLogTest, cases)
#include "change_log_test.moc"
