#include "serato/track_fields.h"

#include "support/serato_builder.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

SeratoTrack trackOf(const QByteArray &fields)
{
    return trackFromFields(SeratoParser::fieldsIn(fields));
}

/// A track that keeps the identity of another, for comparison of all else.
SeratoTrack withIdentityOf(const SeratoTrack &other, SeratoTrack track)
{
    track.id = other.id;
    return track;
}

using TextMember = QString SeratoTrack::*;
using NumberMember = quint64 SeratoTrack::*;
using FlagMember = bool SeratoTrack::*;

} // namespace

Q_DECLARE_METATYPE(TextMember)
Q_DECLARE_METATYPE(NumberMember)
Q_DECLARE_METATYPE(FlagMember)

class TrackFieldsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textTagSetsItsMemberAlone_data();
    void textTagSetsItsMemberAlone();
    void numberTagSetsItsMemberAlone_data();
    void numberTagSetsItsMemberAlone();
    void flagTagSetsItsMemberAlone_data();
    void flagTagSetsItsMemberAlone();
    void noFieldsGiveDefaults();
    void unknownTagsAreSkipped();
    void laterFieldOfATagWins();
    void eachTrackHasAnIdentityOfItsOwn();
};

void TrackFieldsTest::textTagSetsItsMemberAlone_data()
{
    QTest::addColumn<TextMember>("member");
    QTest::newRow("ttyp") << &SeratoTrack::fileType;
    QTest::newRow("pfil") << &SeratoTrack::relativePath;
    QTest::newRow("tsng") << &SeratoTrack::title;
    QTest::newRow("tart") << &SeratoTrack::artist;
    QTest::newRow("talb") << &SeratoTrack::album;
    QTest::newRow("tgen") << &SeratoTrack::genre;
    QTest::newRow("tcmp") << &SeratoTrack::composer;
    QTest::newRow("tcom") << &SeratoTrack::comment;
    QTest::newRow("ttyr") << &SeratoTrack::year;
    QTest::newRow("tbpm") << &SeratoTrack::bpm;
    QTest::newRow("tkey") << &SeratoTrack::key;
    QTest::newRow("tlen") << &SeratoTrack::lengthText;
    QTest::newRow("tbit") << &SeratoTrack::bitrateText;
    QTest::newRow("tsmp") << &SeratoTrack::sampleRateText;
    QTest::newRow("tsiz") << &SeratoTrack::sizeText;
    QTest::newRow("tadd") << &SeratoTrack::dateAddedText;
}

void TrackFieldsTest::textTagSetsItsMemberAlone()
{
    QFETCH(const TextMember, member);
    const SeratoTrack track = trackOf(textRecord(QTest::currentDataTag(), u"Grün"));
    SeratoTrack expected;
    expected.*member = u"Grün"_s;
    QCOMPARE(withIdentityOf(expected, track), expected);
}

void TrackFieldsTest::numberTagSetsItsMemberAlone_data()
{
    QTest::addColumn<NumberMember>("member");
    QTest::newRow("ufsb") << &SeratoTrack::fileSizeBytes;
    QTest::newRow("uadd") << &SeratoTrack::dateAdded;
    QTest::newRow("utpc") << &SeratoTrack::playCount;
}

void TrackFieldsTest::numberTagSetsItsMemberAlone()
{
    QFETCH(const NumberMember, member);
    const SeratoTrack track = trackOf(record(QTest::currentDataTag(), hex("0102030405060708")));
    SeratoTrack expected;
    expected.*member = 0x0102030405060708;
    QCOMPARE(withIdentityOf(expected, track), expected);
}

void TrackFieldsTest::flagTagSetsItsMemberAlone_data()
{
    QTest::addColumn<FlagMember>("member");
    QTest::newRow("bmis") << &SeratoTrack::flaggedMissing;
    QTest::newRow("bcrt") << &SeratoTrack::corrupt;
    QTest::newRow("bply") << &SeratoTrack::isPlayed;
}

void TrackFieldsTest::flagTagSetsItsMemberAlone()
{
    QFETCH(const FlagMember, member);
    const SeratoTrack track = trackOf(flagRecord(QTest::currentDataTag(), true));
    SeratoTrack expected;
    expected.*member = true;
    QCOMPARE(withIdentityOf(expected, track), expected);
}

void TrackFieldsTest::noFieldsGiveDefaults()
{
    const SeratoTrack track = trackFromFields({});
    QCOMPARE(withIdentityOf(track, SeratoTrack()), track);
    QVERIFY(!track.id.isNull());
}

void TrackFieldsTest::unknownTagsAreSkipped()
{
    // All tags that differ from a known one in their last letter, so that a lookup by part of the
    // tag would show.
    for (int letter = 0; letter < 128; ++letter) {
        const QByteArray tag = QByteArray("tsn") + char(letter);
        QCOMPARE(trackOf(textRecord(tag, u"x")).title, letter == 'g' ? u"x"_s : QString());
    }
    QCOMPARE(trackOf(textRecord("uknw", u"x") + textRecord("tsng", u"y")).title, u"y"_s);
}

void TrackFieldsTest::laterFieldOfATagWins()
{
    QCOMPARE(trackOf(textRecord("tsng", u"one") + textRecord("tsng", u"two")).title, u"two"_s);
    QCOMPARE(trackOf(textRecord("tsng", u"one") + textRecord("tsng", u"")).title, QString());
    QCOMPARE(trackOf(flagRecord("bmis", true) + record("bmis")).flaggedMissing, false);
}

void TrackFieldsTest::eachTrackHasAnIdentityOfItsOwn()
{
    QVERIFY(trackFromFields({}).id != trackFromFields({}).id);
}

QTEST_GUILESS_MAIN(TrackFieldsTest)
#include "track_fields_test.moc"
