#include "demo_library_run.h"
#include "raw_library.h"

#include <QDateTime>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

#include <algorithm>
#include <cmath>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

/// A track as the database and the disk state it.
struct Track
{
    raw::Records fields;
    QString path;
    QByteArray file;
    bool onDisk = false;
    bool hasMarkers = false;
    bool hasGrid = false;
    bool hasGain = false;
    bool tagsRead = false;

    QString text(const char *tag) const { return raw::text(fields.first(tag)); }
    bool missing() const { return !onDisk || fields.first("bmis") == "\1"; }
    int kbps() const { return static_cast<int>(text("tbit").section(u'.', 0, 0).toInt()); }
};

std::pair<QString, QString> shownNames(const QString &artist, const QString &title)
{
    const auto at = title.indexOf(u" - "_s);
    return artist.isEmpty() && at >= 0 ? std::pair(title.left(at), title.mid(at + 3))
                                       : std::pair(artist, title);
}

Track trackOf(const QByteArray &payload)
{
    Track track;
    track.fields = raw::records(payload);
    track.path = track.text("pfil");
    track.onDisk = QFileInfo(u'/' + track.path).isFile();
    track.file = raw::fileBytes(u'/' + track.path);
    const qsizetype size = raw::tagSize(track.file);
    if (size > 10) {
        const QByteArray tag = track.file.mid(10, size - 10);
        track.tagsRead = true;
        track.hasMarkers = tag.contains("Serato Markers2");
        track.hasGrid = tag.contains("Serato BeatGrid");
        track.hasGain = tag.contains("REPLAYGAIN") || tag.contains("replaygain") ||
                        tag.contains("Serato Autotags");
    }
    return track;
}

struct Copies
{
    QString key;
    QStringList members;
    qint64 reclaimable = 0;
};

/// Tracks on disk with one artist and title, the best copy first, the costliest group first.
QList<Copies> duplicates(const QList<Track> &tracks)
{
    QStringList keys;
    QHash<QString, QList<const Track *>> byKey;
    for (const Track &track : tracks) {
        const auto [artist, title] = shownNames(track.text("tart"), track.text("tsng"));
        const QString key = artist.toLower().trimmed() + u'|' + title.toLower().trimmed();
        if (track.onDisk && !key.endsWith(u'|')) {
            byKey[key].append(&track);
            keys.append(key);
        }
    }
    keys.removeDuplicates();
    QList<Copies> groups;
    for (const QString &key : std::as_const(keys)) {
        QList<const Track *> copies = byKey[key];
        std::stable_sort(copies.begin(), copies.end(), [](const Track *a, const Track *b) {
            return std::tuple(b->kbps(), b->hasGrid + b->hasMarkers, b->file.size()) <
                   std::tuple(a->kbps(), a->hasGrid + a->hasMarkers, a->file.size());
        });
        Copies group{key, {copies.first()->path}, 0};
        for (const Track *copy : copies.sliced(1)) {
            group.members.append(copy->path);
            group.reclaimable += copy->file.size();
        }
        if (copies.size() > 1) {
            groups.append(group);
        }
    }
    std::stable_sort(groups.begin(), groups.end(), [](const Copies &a, const Copies &b) {
        return a.reclaimable > b.reclaimable;
    });
    return groups;
}

} // namespace

/// Runs the built program and looks at what it left on disk.
class DemoLibraryTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QString m_home = m_folder.filePath(u"home"_s);
    QString m_serato = m_home + u"/Music/_Serato_"_s;
    QJsonObject m_expected;
    raw::Records m_database;
    QList<Track> m_tracks;

    int count(bool (*holds)(const Track &track)) const
    {
        return static_cast<int>(std::ranges::count_if(m_tracks, holds));
    }

    QHash<QString, QStringList> crates() const
    {
        QHash<QString, QStringList> found;
        const QDir folder(m_serato + u"/Subcrates"_s);
        for (const QString &name : folder.entryList(QDir::Files)) {
            QStringList &paths = found[name.chopped(6)];
            const raw::Records crate = raw::records(raw::fileBytes(folder.filePath(name)));
            for (const raw::Record &record : crate.list) {
                if (record.tag == "otrk") {
                    paths.append(raw::text(raw::records(record.payload).first("ptrk")));
                }
            }
        }
        return found;
    }

private Q_SLOTS:
    void initTestCase()
    {
        const QString expectFile = m_folder.filePath(u"expected.json"_s);
        const Run run =
            demoLibrary({u"--tracks"_s, u"500"_s, u"--seed"_s, u"11"_s, u"--out"_s, m_home,
                         u"--expect"_s, expectFile, u"--today"_s, u"2026-03-01"_s});
        QCOMPARE(run.errors, QByteArray());
        QCOMPARE(run.status, 0);
        m_expected = QJsonDocument::fromJson(raw::fileBytes(expectFile)).object();
        m_database = raw::records(raw::fileBytes(m_serato + u"/database V2"_s));
        for (const raw::Record &record : m_database.list) {
            if (record.tag == "otrk") {
                m_tracks.append(trackOf(record.payload));
            }
        }
    }

    void databaseIsAVersionThenTracksThenAnUnknownRecord()
    {
        QVERIFY(m_database.whole);
        QCOMPARE(m_database.list.size(), 502);
        QCOMPARE(m_database.list.first().tag, QByteArray("vrsn"));
        QCOMPARE(raw::text(m_database.list.first().payload), u"2.0/Serato Scratch LIVE Database"_s);
        QCOMPARE(m_tracks.size(), 500);
        QCOMPARE(m_database.list.last().tag, QByteArray("oxtr"));
    }

    void everyTrackRecordIsWholeAndItsPathRelative()
    {
        QSet<QString> paths;
        for (const Track &track : std::as_const(m_tracks)) {
            QVERIFY(track.fields.whole);
            QVERIFY2(track.path.startsWith(m_home.mid(1) + u'/'), qPrintable(track.path));
            QVERIFY(!paths.contains(track.path.toLower()));
            paths.insert(track.path.toLower());
        }
    }

    void recordsCarryFieldsThatReadersDontKnow()
    {
        QSet<QByteArray> tags;
        for (const Track &track : std::as_const(m_tracks)) {
            for (const raw::Record &field : track.fields.list) {
                tags.insert(field.tag);
            }
        }
        for (const char *tag : {"tgrp", "tlbl", "ulbl", "bhrt", "uplp", "sbav", "utme"}) {
            QVERIFY2(tags.contains(tag), tag);
        }
    }

    void everyFaultOccurs()
    {
        QVERIFY(!m_expected[u"moved"_s].toArray().isEmpty());
        QVERIFY(!m_expected[u"gone"_s].toArray().isEmpty());
        QVERIFY(count([](const Track &track) { return track.onDisk && track.missing(); }) > 0);
        QVERIFY(count([](const Track &track) { return track.text("tgen").isEmpty(); }) > 0);
        QVERIFY(count([](const Track &track) { return track.onDisk && !track.tagsRead; }) > 0);
        QVERIFY(count([](const Track &track) {
                    return track.text("tart").isEmpty() && track.text("tsng").contains(u" - "_s);
                }) > 0);
        QVERIFY(count([](const Track &track) {
                    return track.onDisk &&
                           raw::number(track.fields.first("ufsb"), 0) != track.file.size();
                }) > 0);
    }

    void countsAgreeWithTheDisk_data()
    {
        QTest::addColumn<int>("counted");
        const auto row = [this](const char *name, bool (*holds)(const Track &)) {
            QTest::newRow(name) << count(holds);
        };
        row("total", [](const Track &) { return true; });
        row("onDisk", [](const Track &track) { return track.onDisk; });
        row("missing", [](const Track &track) { return track.missing(); });
        row("tagsReadable", [](const Track &track) { return track.tagsRead; });
        row("withMarkers", [](const Track &track) { return track.hasMarkers; });
        row("withGrid", [](const Track &track) { return track.hasGrid; });
        row("withGain", [](const Track &track) { return track.hasGain; });
        row("withKey", [](const Track &track) { return !track.text("tkey").trimmed().isEmpty(); });
        row("withGenre",
            [](const Track &track) { return !track.text("tgen").trimmed().isEmpty(); });
        row("withBPM", [](const Track &track) {
            return !track.text("tbpm").trimmed().isEmpty() && track.text("tbpm") != u"0"_s;
        });
        row("withArtist", [](const Track &track) {
            const auto names = shownNames(track.text("tart"), track.text("tsng"));
            return !names.first.trimmed().isEmpty();
        });
    }

    void countsAgreeWithTheDisk()
    {
        QFETCH(int, counted);
        QVERIFY(counted > 0);
        QCOMPARE(m_expected[QString::fromLatin1(QTest::currentDataTag())].toInt(-1), counted);
    }

    void bytesAgreeWithTheDisk()
    {
        qint64 bytes = 0;
        for (const Track &track : std::as_const(m_tracks)) {
            bytes += track.file.size();
        }
        QCOMPARE(m_expected[u"onDiskBytes"_s].toInteger(), bytes);
    }

    void duplicatesAgreeWithTheDisk()
    {
        const QList<Copies> groups = duplicates(m_tracks);
        const QJsonArray expected = m_expected[u"duplicates"_s].toArray();
        QVERIFY(groups.size() >= 10);
        QCOMPARE(expected.size(), groups.size());
        qint64 reclaimable = 0;
        int excess = 0;
        for (qsizetype i = 0; i < groups.size(); ++i) {
            const QJsonObject group = expected[i].toObject();
            QCOMPARE(group[u"key"_s].toString(), groups[i].key);
            QCOMPARE(group[u"members"_s].toArray(), QJsonArray::fromStringList(groups[i].members));
            QCOMPARE(group[u"reclaimableBytes"_s].toInteger(), groups[i].reclaimable);
            reclaimable += groups[i].reclaimable;
            excess += static_cast<int>(groups[i].members.size()) - 1;
        }
        QCOMPARE(m_expected[u"duplicateGroups"_s].toInt(), groups.size());
        QCOMPARE(m_expected[u"reclaimableBytes"_s].toInteger(), reclaimable);
        QCOMPARE(m_expected[u"duplicateExcess"_s].toInt(), excess);
    }

    void scoresFollowFromTheCounts()
    {
        const auto value = [this](const QString &key) { return double(m_expected[key].toInt()); };
        const auto percent = [](double part, double whole) {
            return static_cast<int>(std::round(part / whole * 100));
        };
        const double total = value(u"total"_s);
        const double readable = value(u"tagsReadable"_s);
        const QJsonArray scores{
            percent(value(u"onDisk"_s), total),
            percent(value(u"withGrid"_s), readable),
            percent(total - value(u"duplicateExcess"_s), total),
            percent(value(u"withArtist"_s) + value(u"withGenre"_s), 2 * total),
            percent(value(u"withGain"_s), readable),
            percent(value(u"withBPM"_s) + value(u"withKey"_s), 2 * total),
        };
        QCOMPARE(m_expected[u"dimensions"_s].toArray(), scores);
        double sum = 0;
        for (const auto &score : scores) {
            sum += score.toInt();
        }
        QCOMPARE(m_expected[u"score"_s].toInt(), static_cast<int>(std::round(sum / 6)));
    }

    void movedFilesLieElsewhereUnderTheirName()
    {
        for (const auto &entry : m_expected[u"moved"_s].toArray()) {
            const QFileInfo was(u'/' + entry[u"path"_s].toString());
            const QFileInfo now(u'/' + entry[u"nowAt"_s].toString());
            QVERIFY(!was.exists());
            QVERIFY2(now.isFile(), qPrintable(now.filePath()));
            QCOMPARE(now.fileName(), was.fileName());
            QVERIFY(now.filePath().startsWith(m_home));
        }
    }

    void everyOtherTrackLiesInItsPlaceUnlessGone()
    {
        QSet<QString> lost;
        for (const auto &entry : m_expected[u"moved"_s].toArray()) {
            lost.insert(entry[u"path"_s].toString());
        }
        for (const auto &entry : m_expected[u"gone"_s].toArray()) {
            lost.insert(entry.toString());
        }
        for (const Track &track : std::as_const(m_tracks)) {
            QCOMPARE(track.onDisk, !lost.contains(track.path));
        }
    }

    void cratesAgreeWithTheDisk()
    {
        QJsonObject counted;
        QSet<QString> filed;
        const QHash<QString, QStringList> all = crates();
        for (auto crate = all.begin(); crate != all.end(); ++crate) {
            counted[crate.key()] = static_cast<int>(crate->size());
            filed.unite(QSet<QString>(crate->begin(), crate->end()));
        }
        QCOMPARE(m_expected[u"crates"_s].toObject(), counted);
        int orphans = 0;
        for (const Track &track : std::as_const(m_tracks)) {
            orphans += track.onDisk && !filed.contains(track.path);
        }
        QVERIFY(orphans > 0);
        QCOMPARE(m_expected[u"orphans"_s].toInt(), orphans);
    }

    void cratesHaveTheFaultsOfRealOnes()
    {
        QSet<QString> known;
        for (const Track &track : std::as_const(m_tracks)) {
            known.insert(track.path);
        }
        const QHash<QString, QStringList> all = crates();
        bool empty = false;
        bool nested = false;
        bool repeats = false;
        bool stale = false;
        for (auto crate = all.begin(); crate != all.end(); ++crate) {
            const QSet<QString> paths(crate->begin(), crate->end());
            empty |= paths.isEmpty();
            nested |= crate.key().contains(u"%%"_s);
            repeats |= paths.size() < crate->size();
            stale |= !known.contains(paths);
        }
        QVERIFY(empty);
        QVERIFY(nested);
        QVERIFY(repeats);
        QVERIFY(stale);
    }

    void someCratesAreNearlyTheSame()
    {
        const QList<QStringList> all = crates().values();
        int nearlySame = 0;
        for (qsizetype i = 0; i < all.size(); ++i) {
            for (qsizetype j = i + 1; j < all.size(); ++j) {
                QSet<QString> shared(all[i].begin(), all[i].end());
                shared.intersect(QSet<QString>(all[j].begin(), all[j].end()));
                const auto smaller = std::min(all[i].size(), all[j].size());
                nearlySame += smaller >= 10 && shared.size() * 100 > smaller * 80;
            }
        }
        QVERIFY(nearlySame > 0);
    }

    void playsAgreeWithTheSessions()
    {
        const QDir folder(m_serato + u"/History/Sessions"_s);
        const qint64 today =
            QDateTime(QDate(2026, 3, 1), QTime(0, 0), QTimeZone::utc()).toSecsSinceEpoch();
        constexpr qint64 secondsInDay = 86'400;
        int plays = 0;
        int entries = 0;
        for (const QString &name : folder.entryList({u"*.session"_s}, QDir::Files)) {
            const raw::Records session = raw::records(raw::fileBytes(folder.filePath(name)));
            QVERIFY(session.whole);
            for (const raw::Record &entry : session.list) {
                if (entry.tag != "oent") {
                    continue;
                }
                const auto fields = raw::records(raw::records(entry.payload).first("adat"));
                QVERIFY(fields.whole);
                const QString title = raw::text(fields.first(QByteArray("\0\0\0\6", 4)));
                const QByteArray time = fields.first(QByteArray("\0\0\0\x1C", 4));
                QCOMPARE(time.size(), 4);
                QVERIFY(raw::number(time, 0) < today + secondsInDay);
                QVERIFY(raw::number(time, 0) > today - 160 * secondsInDay);
                plays += !title.isEmpty();
                ++entries;
            }
        }
        QVERIFY(plays > 300);
        QVERIFY(entries > plays);
        QCOMPARE(m_expected[u"plays"_s].toInt(), plays);
        QCOMPARE(m_expected[u"sessions"_s].toInt(), folder.entryList({u"*.session"_s}).size());
    }
};

QTEST_GUILESS_MAIN(DemoLibraryTest)
#include "demo_library_test.moc"
