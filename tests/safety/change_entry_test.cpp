#include "safety/change_entry.h"

#include "safety/store_file.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

const QDateTime noon({2026, 11, 20}, {12, 0}, Qt::UTC);

ChangeEntry fullEntry()
{
    return {.id = u"chg-1-1795176000"_s,
            .kind = ChangeEntry::Kind::Relink,
            .date = noon,
            .target = u"a.mp3"_s,
            .detail = u"Relinked “a.mp3”"_s,
            .before = u"Music/a.mp3"_s,
            .after = u"Volumes/USB/a.mp3"_s,
            .reversibleUntil = noon.addDays(30),
            .reversed = false,
            .snapshotId = u"snap-1"_s,
            .holdingId = u"held-1"_s};
}

const QByteArray fullText = "{\n"
                            "    \"after\": \"Volumes/USB/a.mp3\",\n"
                            "    \"before\": \"Music/a.mp3\",\n"
                            "    \"date\": \"2026-11-20T12:00:00Z\",\n"
                            "    \"detail\": \"Relinked “a.mp3”\",\n"
                            "    \"holdingID\": \"held-1\",\n"
                            "    \"id\": \"chg-1-1795176000\",\n"
                            "    \"kind\": \"relink\",\n"
                            "    \"reversed\": false,\n"
                            "    \"reversibleUntil\": \"2026-12-20T12:00:00Z\",\n"
                            "    \"snapshotID\": \"snap-1\",\n"
                            "    \"target\": \"a.mp3\"\n"
                            "  }";

} // namespace

class ChangeEntryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isReversibleWithinItsWindow_data();
    void isReversibleWithinItsWindow();
    void knowsTheTextsOfEveryKind_data();
    void knowsTheTextsOfEveryKind();
    void knowsNoOtherKind();
    void standsInTheFileAsItsFields();
    void leavesOutWhatHasNoValue();
    void readsEveryCombinationOfOptionalFields();
};

void ChangeEntryTest::isReversibleWithinItsWindow_data()
{
    QTest::addColumn<std::optional<QDateTime>>("until");
    QTest::addColumn<bool>("reversed");
    QTest::addColumn<bool>("isReversible");
    const auto row = [](const char *name, std::optional<QDateTime> until, bool reversed,
                        bool isReversible) {
        QTest::newRow(name) << until << reversed << isReversible;
    };
    row("ahead of the end", noon.addSecs(1), false, true);
    row("at the end", noon, false, false);
    row("past the end", noon.addSecs(-1), false, false);
    row("undone", noon.addDays(30), true, false);
    row("no window", std::nullopt, false, false);
}

void ChangeEntryTest::isReversibleWithinItsWindow()
{
    QFETCH(std::optional<QDateTime>, until);
    QFETCH(bool, reversed);
    QFETCH(bool, isReversible);
    for (const ChangeEntry::Kind kind : ChangeEntry::allKinds()) {
        ChangeEntry entry;
        entry.kind = kind;
        entry.reversibleUntil = until;
        entry.reversed = reversed;
        QCOMPARE(entry.isReversible(noon), isReversible);
        const platform::ScopedClock clock(noon);
        QCOMPARE(entry.isReversible(), isReversible);
    }
}

void ChangeEntryTest::knowsTheTextsOfEveryKind_data()
{
    using Kind = ChangeEntry::Kind;
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("label");
    const auto row = [](const char *rawValue, Kind kind, const QString &label) {
        QTest::newRow(rawValue) << kind << label;
    };
    row("snapshot", Kind::Snapshot, u"Snapshot"_s);
    row("rollback", Kind::Rollback, u"Rollback"_s);
    row("relink", Kind::Relink, u"Relink"_s);
    row("dedupe", Kind::Dedupe, u"Duplicate → holding"_s);
    row("restoreCues", Kind::RestoreCues, u"Restore cues"_s);
    row("tag", Kind::Tag, u"Tag"_s);
    row("gain", Kind::Gain, u"Loudness tag"_s);
    row("archive", Kind::Archive, u"Archive version"_s);
}

void ChangeEntryTest::knowsTheTextsOfEveryKind()
{
    QFETCH(ChangeEntry::Kind, kind);
    const QString rawValue = QString::fromLatin1(QTest::currentDataTag());
    QTEST(ChangeEntry::label(kind), "label");
    QCOMPARE(ChangeEntry::rawValue(kind), rawValue);
    QCOMPARE(ChangeEntry::kindOf(rawValue), std::optional(kind));
    QCOMPARE(ChangeEntry::allKinds().at(int(kind)), kind);
    QCOMPARE(ChangeEntry::allKinds().size(), 8);
}

void ChangeEntryTest::knowsNoOtherKind()
{
    for (const char *text : {"", "Snapshot", "restorecues", "unknown", "relink "})
        QVERIFY(!ChangeEntry::kindOf(QString::fromLatin1(text)));
    const auto list = StoreFile::decoded<ChangeEntry>(
        "[" + QByteArray(fullText).replace("relink", "moved") + "]");
    QVERIFY(!list.has_value());
}

void ChangeEntryTest::standsInTheFileAsItsFields()
{
    QCOMPARE(StoreFile::encoded(fullEntry()), fullText);
    const auto list = StoreFile::decoded<ChangeEntry>("[\n  " + fullText + "\n]\n");
    QVERIFY(list.has_value());
    QCOMPARE(list->records, QList<ChangeEntry>{fullEntry()});
}

void ChangeEntryTest::leavesOutWhatHasNoValue()
{
    ChangeEntry entry = fullEntry();
    entry.before = entry.after = entry.snapshotId = entry.holdingId = std::nullopt;
    entry.reversibleUntil.reset();
    entry.reversed = true;
    QCOMPARE(StoreFile::encoded(entry), QByteArray("{\n"
                                                   "    \"date\": \"2026-11-20T12:00:00Z\",\n"
                                                   "    \"detail\": \"Relinked “a.mp3”\",\n"
                                                   "    \"id\": \"chg-1-1795176000\",\n"
                                                   "    \"kind\": \"relink\",\n"
                                                   "    \"reversed\": true,\n"
                                                   "    \"target\": \"a.mp3\"\n"
                                                   "  }"));
}

void ChangeEntryTest::readsEveryCombinationOfOptionalFields()
{
    for (int bits = 0; bits < 32; ++bits) {
        ChangeEntry entry = fullEntry();
        if (bits & 1)
            entry.before.reset();
        if (bits & 2)
            entry.after.reset();
        if (bits & 4)
            entry.reversibleUntil.reset();
        if (bits & 8)
            entry.snapshotId.reset();
        if (bits & 16)
            entry.holdingId.reset();
        const QByteArray file = StoreFile::listOf({StoreFile::encoded(entry)});
        const auto list = StoreFile::decoded<ChangeEntry>(file);
        QVERIFY(list.has_value());
        QCOMPARE(list->records, QList<ChangeEntry>{entry});
        QCOMPARE(StoreFile::listOf(list->texts), file);
    }
}

QTEST_GUILESS_MAIN(ChangeEntryTest)
#include "change_entry_test.moc"
