#include "analysis/duplicates.h"

#include "foundation/text.h"
#include "support/random_library.h"
#include "support/track_builder.h"

#include <QTest>

#include <map>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

/// What a group amounts to, in a form that compares: its key, its members' ids, its bytes.
struct Outline
{
    QString key;
    QList<QUuid> members;
    quint64 reclaimableBytes = 0;

    bool operator==(const Outline &) const = default;
};

/// The rule word by word, one lower-cased copy and one map look-up at a time.
std::vector<Outline> slowGroups(const std::vector<ScannedTrack> &tracks,
                                const QSet<QString> &ignored)
{
    std::map<QString, std::vector<ScannedTrack>> byKey;
    std::vector<QString> order;
    for (const ScannedTrack &scanned : tracks) {
        if (!scanned.existsOnDisk)
            continue;
        const QString artistLow = lowerCased(scanned.track.displayArtist());
        const QString titleLow = lowerCased(scanned.track.displayTitle());
        const QString title = trimmedWhiteSpace(titleLow).toString();
        if (title.isEmpty())
            continue;
        const QString key = trimmedWhiteSpace(artistLow).toString() + u'|' + title;
        if (ignored.contains(key))
            continue;
        if (!byKey.contains(key))
            order.push_back(key);
        byKey[key].push_back(scanned);
    }
    std::vector<Outline> groups;
    for (const QString &key : order) {
        std::vector<ScannedTrack> &members = byKey[key];
        if (members.size() < 2)
            continue;
        std::stable_sort(members.begin(), members.end(), [](const auto &a, const auto &b) {
            const auto rank = [](const ScannedTrack &s) {
                return std::tuple(s.track.bitrateKbps(), int(s.hasBeatGrid) + int(s.hasMarkers),
                                  s.onDiskSizeBytes);
            };
            return rank(a) > rank(b);
        });
        Outline outline{key, {}, 0};
        for (const ScannedTrack &member : members)
            outline.members << member.id();
        for (size_t i = 1; i < members.size(); ++i)
            outline.reclaimableBytes += members[i].onDiskSizeBytes;
        groups.push_back(outline);
    }
    std::stable_sort(groups.begin(), groups.end(), [](const auto &a, const auto &b) {
        return a.reclaimableBytes > b.reclaimableBytes;
    });
    return groups;
}

std::vector<Outline> outlines(const std::vector<DuplicateGroup> &groups)
{
    std::vector<Outline> outlines;
    for (const DuplicateGroup &group : groups) {
        Outline outline{group.key, {}, group.reclaimableBytes};
        for (const ScannedTrack &member : group.members)
            outline.members << member.id();
        outlines.push_back(outline);
    }
    return outlines;
}

QStringList keys(const std::vector<ScannedTrack> &tracks, const QSet<QString> &ignored = {})
{
    QStringList keys;
    for (const DuplicateGroup &group : duplicateGroupsOf(tracks, ignored))
        keys << group.key;
    return keys;
}

} // namespace

class DuplicatesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingGivesNothing() { QVERIFY(duplicateGroupsOf({}, {}).empty()); }

    void whatMakesCopies_data()
    {
        QTest::addColumn<ScannedTrack>("other");
        QTest::addColumn<bool>("areCopies");
        QTest::newRow("the same") << ScannedTrack(onDisk(u"Adele"_s, u"Hello"_s)) << true;
        QTest::newRow("other case") << ScannedTrack(onDisk(u"ADELE"_s, u"hello"_s)) << true;
        QTest::newRow("blanks, tabs and line breaks around")
            << ScannedTrack(onDisk(u" Adele\n"_s, u"\tHello \r\n"_s)) << true;
        QTest::newRow("all of it in the title")
            << ScannedTrack(onDisk(u""_s, u"Adele - Hello"_s)) << true;
        QTest::newRow("other bit rate, size and path")
            << ScannedTrack(onDisk(u"Adele"_s, u"Hello"_s).bitrate(u"96"_s).bytes(9).path(u"x"_s))
            << true;
        QTest::newRow("flagged missing, but on disk")
            << ScannedTrack(onDisk(u"Adele"_s, u"Hello"_s).flaggedMissing()) << true;
        QTest::newRow("blank inside") << ScannedTrack(onDisk(u"Adele"_s, u"Hel lo"_s)) << false;
        QTest::newRow("other artist") << ScannedTrack(onDisk(u"Abba"_s, u"Hello"_s)) << false;
        QTest::newRow("other title") << ScannedTrack(onDisk(u"Adele"_s, u"Hello 2"_s)) << false;
        QTest::newRow("not on disk") << ScannedTrack(lost(u"Adele"_s, u"Hello"_s)) << false;
    }

    void whatMakesCopies()
    {
        QFETCH(ScannedTrack, other);
        QFETCH(bool, areCopies);
        const QStringList expected = areCopies ? QStringList{u"adele|hello"_s} : QStringList();
        QCOMPARE(keys({onDisk(u"Adele"_s, u"Hello"_s), other}), expected);
    }

    void aTrackWithoutTitleHasNoCopies_data()
    {
        QTest::addColumn<QString>("artist");
        QTest::addColumn<QString>("title");
        QTest::newRow("empty") << u"Adele"_s << u""_s;
        QTest::newRow("white space alone") << u"Adele"_s << u" \t\n"_s;
        QTest::newRow("separator alone") << u""_s << u" - "_s;
    }

    void aTrackWithoutTitleHasNoCopies()
    {
        QFETCH(QString, artist);
        QFETCH(QString, title);
        QVERIFY(keys({onDisk(artist, title), onDisk(artist, title)}).isEmpty());
    }

    void anEmptyArtistIsAllowed()
    {
        QCOMPARE(keys({onDisk(u""_s, u"Hello"_s), onDisk(u" "_s, u"Hello"_s)}),
                 QStringList{u"|hello"_s});
    }

    void aBarInANameIsNotEscaped()
    {
        QCOMPARE(keys({onDisk(u"a|b"_s, u"c"_s), onDisk(u"a"_s, u"b|c"_s)}),
                 QStringList{u"a|b|c"_s});
    }

    void accentsWrittenInTwoWaysAreNoCopies()
    {
        QVERIFY(keys({onDisk(u""_s, u"\u00E9"_s), onDisk(u""_s, u"e\u0301"_s)}).isEmpty());
    }

    void anIgnoredKeyMakesItsGroupVanish()
    {
        const std::vector<ScannedTrack> tracks = {onDisk(u"A"_s, u"x"_s), onDisk(u"a"_s, u"X"_s),
                                                  onDisk(u"B"_s, u"x"_s), onDisk(u"B"_s, u"x"_s)};
        QCOMPARE(keys(tracks, {u"a|x"_s}), QStringList{u"b|x"_s});
        QCOMPARE(keys(tracks, {u"A|x"_s}), (QStringList{u"a|x"_s, u"b|x"_s}));
    }

    void theBestCopyComesFirst_data()
    {
        QTest::addColumn<ScannedTrack>("worse");
        QTest::addColumn<ScannedTrack>("better");
        const auto copy = [] { return onDisk(u"A"_s, u"x"_s); };
        const auto row = [](const char *name, const TrackBuilder &worse,
                            const TrackBuilder &better) {
            QTest::newRow(name) << ScannedTrack(worse) << ScannedTrack(better);
        };
        row("bit rate ahead of tags and size", copy().bitrate(u"128"_s).grid().markers().bytes(9),
            copy().bitrate(u"320"_s));
        row("known bit rate ahead of unknown", copy().bitrate(u"VBR"_s), copy().bitrate(u"1"_s));
        row("both tags ahead of the grid, even if smaller", copy().grid().bytes(9),
            copy().grid().markers());
        row("both tags ahead of the markers", copy().markers().bytes(9), copy().grid().markers());
        row("markers ahead of none", copy().bytes(9), copy().markers());
        row("grid ahead of none", copy().bytes(9), copy().grid());
        row("grid and markers weigh the same, size decides", copy().grid().bytes(1),
            copy().markers().bytes(2));
        row("size", copy().bytes(1), copy().bytes(2));
    }

    void theBestCopyComesFirst()
    {
        QFETCH(ScannedTrack, worse);
        QFETCH(ScannedTrack, better);
        for (const auto &tracks : {std::vector{worse, better}, std::vector{better, worse}}) {
            const std::vector<DuplicateGroup> groups = duplicateGroupsOf(tracks, {});
            QCOMPARE(groups.size(), size_t(1));
            QCOMPARE(groups[0].members, (std::vector{better, worse}));
            QCOMPARE(groups[0].reclaimableBytes, worse.onDiskSizeBytes);
        }
    }

    void equalCopiesKeepLibraryOrder()
    {
        const ScannedTrack first = onDisk(u"A"_s, u"x"_s).grid();
        const ScannedTrack second = onDisk(u"A"_s, u"x"_s).markers();
        const ScannedTrack third = onDisk(u"A"_s, u"x"_s).grid();
        QCOMPARE(duplicateGroupsOf({first, second, third}, {}).at(0).members,
                 (std::vector{first, second, third}));
    }

    void mostBytesFirstAndTiesInTheOrderMet()
    {
        const auto pair = [](const QString &title, quint64 bytes) -> ScannedTrack {
            return onDisk(u""_s, title).bytes(bytes);
        };
        QCOMPARE(keys({pair(u"d"_s, 1), pair(u"b"_s, 5), pair(u"z"_s, 1), pair(u"c"_s, 1),
                       pair(u"c"_s, 1), pair(u"z"_s, 1), pair(u"b"_s, 5), pair(u"d"_s, 1)}),
                 (QStringList{u"|b"_s, u"|d"_s, u"|z"_s, u"|c"_s}));
    }

    void identitiesAreFresh()
    {
        const std::vector<ScannedTrack> tracks = {onDisk(u"A"_s, u"x"_s), onDisk(u"A"_s, u"x"_s)};
        const QUuid id = duplicateGroupsOf(tracks, {}).at(0).id;
        QVERIFY(!id.isNull());
        QVERIFY(id != duplicateGroupsOf(tracks, {}).at(0).id);
    }

    void agreesWithTheRuleWordByWord()
    {
        for (unsigned seed = 0; seed < 40; ++seed) {
            RandomLibrary random(seed);
            const std::vector<ScannedTrack> tracks = random.tracks(300);
            QSet<QString> ignored;
            QVERIFY(outlines(duplicateGroupsOf(tracks, {})) == slowGroups(tracks, {}));
            for (const Outline &group : slowGroups(tracks, {})) {
                if (random.oneIn(3))
                    ignored.insert(group.key);
            }
            QVERIFY(!ignored.isEmpty());
            QVERIFY(outlines(duplicateGroupsOf(tracks, ignored)) == slowGroups(tracks, ignored));
        }
    }
};

QTEST_APPLESS_MAIN(DuplicatesTest)
#include "duplicates_test.moc"
