#include "tags/pattern_scan.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

using namespace tarnwick;

namespace {

constexpr PatternScan::Patterns patterns{
    QByteArrayView("Serato Markers2"), QByteArrayView("Serato BeatGrid"),
    QByteArrayView("REPLAYGAIN"), QByteArrayView("replaygain"), QByteArrayView("Serato Autotags")};
constexpr PatternScan scan(patterns);

/// The plain way: every start position, every pattern.
PatternScan::Offsets searchedNaively(const PatternScan::Patterns &wanted, const QByteArray &body)
{
    PatternScan::Offsets found;
    for (size_t index = 0; index < wanted.size(); ++index) {
        const QByteArrayView pattern = wanted[index];
        const auto place = std::search(body.begin(), body.end(), pattern.begin(), pattern.end());
        found[index] = place == body.end() ? PatternScan::notFound : place - body.begin();
    }
    return found;
}

/// Bytes out of a small alphabet, so that pieces of patterns come up all the time.
QByteArray randomBytes(QRandomGenerator &random, qsizetype size, QByteArrayView alphabet)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = alphabet[random.bounded(int(alphabet.size()))];
    return bytes;
}

QByteArray padding(qsizetype size)
{
    return QByteArray(size, '\0');
}

} // namespace

class PatternScanTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsAPatternAtEveryDistanceFromTheGrid();
    void findsNothingInBodiesShorterThanAPattern();
    void missesAPatternThatTheEndCutsOff();
    void missesAPatternThatBeginsAheadOfTheBody();
    void givesTheFirstOfSeveralOccurrences();
    void findsPatternsThatStandBackToBack();
    void rejectsNearMisses();
    void agreesWithThePlainSearchOnRandomBodies_data();
    void agreesWithThePlainSearchOnRandomBodies();
    void agreesWithThePlainSearchOnPatternsThatRepeatThemselves();
};

void PatternScanTest::findsAPatternAtEveryDistanceFromTheGrid()
{
    for (const QByteArrayView pattern : patterns) {
        for (qsizetype ahead = 0; ahead <= 200; ++ahead) {
            for (const qsizetype behind : {0, 1, 7, 8, 9, 10, 71, 72, 73, 200}) {
                const QByteArray body = padding(ahead) + pattern.toByteArray() + padding(behind);
                const auto found = scan.firstOffsets(body);
                QCOMPARE(found, searchedNaively(patterns, body));
                QCOMPARE(*std::max_element(found.begin(), found.end()), ahead);
            }
        }
    }
}

void PatternScanTest::findsNothingInBodiesShorterThanAPattern()
{
    const QByteArray text = "Serato Autotags";
    for (qsizetype size = 0; size < text.size(); ++size) {
        // A view into a larger text: what stands behind it must not be looked at.
        const auto found = scan.firstOffsets(QByteArrayView(text).first(size));
        QCOMPARE(*std::max_element(found.begin(), found.end()), PatternScan::notFound);
    }
}

void PatternScanTest::missesAPatternThatTheEndCutsOff()
{
    for (qsizetype ahead = 0; ahead < 100; ++ahead) {
        const QByteArray whole = padding(ahead) + "Serato Markers2";
        QCOMPARE(scan.firstOffsets(QByteArrayView(whole).chopped(1))[0], PatternScan::notFound);
        QCOMPARE(scan.firstOffsets(whole)[0], ahead);
    }
}

void PatternScanTest::missesAPatternThatBeginsAheadOfTheBody()
{
    const QByteArray whole = "Serato Markers2" + padding(30);
    for (qsizetype cut = 1; cut <= 15; ++cut)
        QCOMPARE(scan.firstOffsets(QByteArrayView(whole).sliced(cut))[0], PatternScan::notFound);
}

void PatternScanTest::givesTheFirstOfSeveralOccurrences()
{
    for (qsizetype first = 0; first < 40; ++first) {
        for (qsizetype gap = 0; gap < 40; ++gap) {
            const QByteArray body = padding(first) + "Serato Autotags" + padding(gap) +
                                    "Serato Autotags" + padding(50) + "Serato Autotags";
            QCOMPARE(scan.firstOffsets(body)[4], first);
        }
    }
}

void PatternScanTest::findsPatternsThatStandBackToBack()
{
    const QByteArray body = "replaygainSerato Autotagsreplaygain-REPLAYGAINSerato BeatGrid";
    QCOMPARE(scan.firstOffsets(body), (PatternScan::Offsets{PatternScan::notFound, 46, 36, 0, 10}));
}

void PatternScanTest::rejectsNearMisses()
{
    for (const char *text : {"Serato Markers_", "Serato Markers 2", "serato markers2", "ReplayGain",
                             "REPLAYGAI", "eplaygain", "Serato  BeatGrid", "Serato Autotag",
                             "SeratoAutotags", "Serato Serato Autotagz"}) {
        for (qsizetype ahead = 0; ahead < 30; ++ahead) {
            const auto found = scan.firstOffsets(padding(ahead) + text + padding(30));
            QCOMPARE(*std::max_element(found.begin(), found.end()), PatternScan::notFound);
        }
    }
}

void PatternScanTest::agreesWithThePlainSearchOnRandomBodies_data()
{
    QTest::addColumn<QByteArray>("alphabet");
    QTest::newRow("letters of all patterns") << QByteArray("SeratoMkrs2 BGidAugREPLYINplayn");
    QTest::newRow("four letters") << QByteArray("Sera");
    QTest::newRow("one letter") << QByteArray("e");
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte)
        all.append(char(byte));
    QTest::newRow("every byte") << all;
}

void PatternScanTest::agreesWithThePlainSearchOnRandomBodies()
{
    QFETCH(QByteArray, alphabet);
    QRandomGenerator random(20);
    int hits = 0;
    for (int round = 0; round < 3000; ++round) {
        QByteArray body = randomBytes(random, random.bounded(1, 400), alphabet);
        for (int piece = random.bounded(4); piece > 0; --piece) {
            const QByteArrayView pattern = patterns[size_t(random.bounded(5))];
            const qsizetype kept = random.bounded(2) ? pattern.size() : random.bounded(15);
            body.insert(random.bounded(int(body.size()) + 1),
                        pattern.first(std::min(kept, pattern.size())));
        }
        const auto found = scan.firstOffsets(body);
        QCOMPARE(found, searchedNaively(patterns, body));
        hits += int(std::ranges::count_if(found, [](qsizetype at) { return at >= 0; }));
    }
    QVERIFY(hits > 1000);
}

void PatternScanTest::agreesWithThePlainSearchOnPatternsThatRepeatThemselves()
{
    const PatternScan::Patterns periodic{
        QByteArrayView("aaaaaaaaaa"), QByteArrayView("ababababab"), QByteArrayView("abaabaabaaba"),
        QByteArrayView("aaaaaaaaab"), QByteArrayView("baaaaaaaaaaaa")};
    const PatternScan periodicScan(periodic);
    QRandomGenerator random(9);
    for (int round = 0; round < 5000; ++round) {
        const QByteArrayView alphabet = round % 2 ? "ab" : "aaaaaaaaaaaaab";
        const QByteArray body = randomBytes(random, random.bounded(1, 200), alphabet);
        QCOMPARE(periodicScan.firstOffsets(body), searchedNaively(periodic, body));
    }
}

QTEST_APPLESS_MAIN(PatternScanTest)
#include "pattern_scan_test.moc"
