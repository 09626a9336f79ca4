#include "analysis/versions.h"

#include "analysis/title_cut.h"
#include "foundation/text.h"
#include "support/random_library.h"
#include "support/track_builder.h"

#include <QSet>
#include <QTest>

#include <map>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

/// What a group amounts to, in a form that compares.
struct Outline
{
    QString base;
    QList<QUuid> members;
    QStringList cuts;

    bool operator==(const Outline &) const = default;
};

std::vector<Outline> outlines(const std::vector<VersionGroup> &groups)
{
    std::vector<Outline> outlines;
    for (const VersionGroup &group : groups) {
        Outline &outline = outlines.emplace_back(Outline{group.base, {}, {}});
        for (const VersionMember &member : group.members) {
            outline.members << member.id();
            outline.cuts << member.cut;
        }
    }
    return outlines;
}

bool isGroup(const std::vector<VersionMember> &members)
{
    QSet<QString> titles;
    for (const VersionMember &member : members)
        titles.insert(lowerCased(member.track.track.displayTitle()));
    return members.size() > 1 && titles.size() > 1;
}

/// The rule word by word.
std::vector<VersionGroup> slowGroups(const std::vector<ScannedTrack> &tracks)
{
    std::map<QString, std::vector<VersionMember>> byKey;
    QStringList order;
    for (const ScannedTrack &scanned : tracks) {
        const QString title = scanned.track.displayTitle();
        const BaseAndCut parts = baseAndCut(title);
        if (!scanned.existsOnDisk || title.isEmpty() || parts.base.isEmpty())
            continue;
        const QString key = lowerCased(scanned.track.displayArtist()) + u'|' + parts.base;
        if (!byKey.contains(key))
            order << key;
        byKey[key].push_back({scanned, parts.cut});
    }
    std::vector<VersionGroup> groups;
    for (const QString &key : order) {
        std::vector<VersionMember> members = byKey[key];
        if (!isGroup(members))
            continue;
        const SeratoTrack &first = members.front().track.track;
        QString base = first.displayTitle();
        if (!first.displayArtist().isEmpty())
            base = first.displayArtist() + u" — "_s + capitalised(baseAndCut(base).base);
        std::stable_sort(members.begin(), members.end(),
                         [](const auto &a, const auto &b) { return a.plays() > b.plays(); });
        groups.push_back({{}, base, members});
    }
    std::stable_sort(groups.begin(), groups.end(), [](const auto &a, const auto &b) {
        return a.members.size() > b.members.size();
    });
    return groups;
}

QStringList bases(const std::vector<ScannedTrack> &tracks)
{
    QStringList bases;
    for (const VersionGroup &group : versionGroupsOf(tracks))
        bases << group.base;
    return bases;
}

} // namespace

class VersionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingGivesNothing() { QVERIFY(versionGroupsOf({}).empty()); }

    void twoCutsOfASong()
    {
        const ScannedTrack plain = onDisk(u"Adele"_s, u"someone like you"_s);
        const ScannedTrack club = onDisk(u"ADELE"_s, u"Someone Like You (Club Mix)"_s);
        const std::vector<VersionGroup> groups = versionGroupsOf({plain, club});
        QCOMPARE(groups.size(), size_t(1));
        QCOMPARE(groups[0].base, u"Adele — Someone Like You"_s);
        QCOMPARE(groups[0].members.size(), size_t(2));
        QCOMPARE(groups[0].members[0].track, plain);
        QCOMPARE(groups[0].members[0].cut, u"Original"_s);
        QCOMPARE(groups[0].members[1].track, club);
        QCOMPARE(groups[0].members[1].cut, u"Club mix"_s);
    }

    void whatMakesNoGroup_data()
    {
        QTest::addColumn<ScannedTrack>("other");
        QTest::newRow("the same title") << ScannedTrack(onDisk(u"A"_s, u"Song"_s));
        QTest::newRow("the title in other case") << ScannedTrack(onDisk(u"A"_s, u"SONG"_s));
        QTest::newRow("other artist") << ScannedTrack(onDisk(u"B"_s, u"Song (Dub)"_s));
        QTest::newRow("the artist with a blank: not trimmed")
            << ScannedTrack(onDisk(u"A "_s, u"Song (Dub)"_s));
        QTest::newRow("not on disk") << ScannedTrack(lost(u"A"_s, u"Song (Dub)"_s));
        QTest::newRow("no base") << ScannedTrack(onDisk(u"A"_s, u"(Intro)"_s));
        QTest::newRow("no title") << ScannedTrack(onDisk(u"A"_s, u""_s));
    }

    void whatMakesNoGroup()
    {
        QFETCH(ScannedTrack, other);
        QVERIFY(bases({onDisk(u"A"_s, u"Song"_s), other}).isEmpty());
    }

    void tracksWithoutABaseJoinNoGroup()
    {
        QVERIFY(bases({onDisk(u"A"_s, u"(Intro)"_s), onDisk(u"A"_s, u"[Dub]"_s)}).isEmpty());
    }

    void blanksAroundATitleMakeAnotherTitle()
    {
        QCOMPARE(bases({onDisk(u"A"_s, u"Song"_s), onDisk(u"A"_s, u"Song "_s)}),
                 QStringList{u"A — Song"_s});
    }

    void theFirstMemberNamesTheGroup()
    {
        QCOMPARE(bases({onDisk(u"aBBA"_s, u"don't stop (Live)"_s),
                        onDisk(u"ABBA"_s, u"Don't Stop"_s).plays(9)}),
                 QStringList{u"aBBA — Don't Stop"_s});
    }

    void withoutAnArtistTheTitleNamesTheGroup()
    {
        QCOMPARE(bases({onDisk(u""_s, u"song [Live]"_s), onDisk(u""_s, u"song"_s)}),
                 QStringList{u"song [Live]"_s});
    }

    void anArtistSplitFromTheTitle()
    {
        QCOMPARE(bases({onDisk(u""_s, u"A - song"_s), onDisk(u"a"_s, u"Song - Dub"_s)}),
                 QStringList{u"A — Song"_s});
    }

    void mostPlayedFirstElseLibraryOrder()
    {
        const auto cut = [](const QString &title, quint64 plays) -> ScannedTrack {
            return onDisk(u"A"_s, title).plays(plays);
        };
        const std::vector<VersionGroup> groups =
            versionGroupsOf({cut(u"Song"_s, 0), cut(u"Song (Dub)"_s, 2), cut(u"Song (Live)"_s, 0),
                             cut(u"Song (Edit)"_s, 2)});
        QStringList cuts;
        for (const VersionMember &member : groups.at(0).members)
            cuts << member.cut;
        QCOMPARE(cuts, (QStringList{u"Dub"_s, u"Edit"_s, u"Original"_s, u"Live"_s}));
    }

    void largestGroupFirstElseInTheOrderMet()
    {
        QCOMPARE(bases({onDisk(u"C"_s, u"x"_s), onDisk(u"B"_s, u"x"_s), onDisk(u"A"_s, u"x"_s),
                        onDisk(u"A"_s, u"x (Dub)"_s), onDisk(u"B"_s, u"x (Dub)"_s),
                        onDisk(u"B"_s, u"x (Live)"_s), onDisk(u"C"_s, u"x (Dub)"_s)}),
                 (QStringList{u"B — X"_s, u"C — X"_s, u"A — X"_s}));
    }

    void identitiesAreFresh()
    {
        const std::vector<ScannedTrack> tracks = {onDisk(u"A"_s, u"x"_s),
                                                  onDisk(u"A"_s, u"x []"_s)};
        const QUuid id = versionGroupsOf(tracks).at(0).id;
        QVERIFY(!id.isNull());
        QVERIFY(id != versionGroupsOf(tracks).at(0).id);
    }

    void placesLeadToTheTracksOfTheGroups()
    {
        const std::vector<ScannedTrack> tracks = {onDisk(u"A"_s, u"other"_s),
                                                  onDisk(u"A"_s, u"x (Dub)"_s),
                                                  onDisk(u"A"_s, u"x"_s).plays(3)};
        const std::vector<VersionPlaces> songs = versionPlacesOf(tracks);
        QCOMPARE(songs.size(), size_t(1));
        QCOMPARE(songs[0].first, 1);
        QCOMPARE(songs[0].cuts.size(), size_t(2));
        QCOMPARE(songs[0].cuts[0].place, 2);
        QCOMPARE(*songs[0].cuts[0].label, u"Original"_s);
        QCOMPARE(songs[0].cuts[1].place, 1);
        QCOMPARE(*songs[0].cuts[1].label, u"Dub"_s);
        const VersionGroup group = versionGroupAt(tracks, songs[0]);
        QVERIFY(outlines({group}) == outlines(versionGroupsOf(tracks)));
        QVERIFY(group.id != versionGroupAt(tracks, songs[0]).id);
    }

    void agreesWithTheRuleWordByWord()
    {
        size_t groups = 0;
        for (unsigned seed = 0; seed < 40; ++seed) {
            const std::vector<ScannedTrack> tracks = RandomLibrary(seed).tracks(300);
            QVERIFY(outlines(versionGroupsOf(tracks)) == outlines(slowGroups(tracks)));
            groups += slowGroups(tracks).size();
        }
        QVERIFY(groups > 400);
    }
};

QTEST_APPLESS_MAIN(VersionsTest)
#include "versions_test.moc"
