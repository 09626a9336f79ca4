// What is written here, read by another program's eyes.

#include "interop_files.h"
#include "support/test_folder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

/// Debian's own interpreter is the one that its mutagen belongs to.
QString interpreter()
{
    const QString system = u"/usr/bin/python3"_s;
    return QFileInfo::exists(system) ? system : u"python3"_s;
}

struct Outcome
{
    bool succeeded = false;
    QByteArray output;
    QByteArray complaint;
};

Outcome run(const QStringList &arguments)
{
    QProcess python;
    python.start(interpreter(),
                 QStringList{u"-B"_s, QStringLiteral(TARNWICK_FOREIGN_TAGS)} + arguments);
    const bool finished = python.waitForFinished() && python.exitStatus() == QProcess::NormalExit &&
                          python.exitCode() == 0;
    return {finished, python.readAllStandardOutput(), python.readAllStandardError()};
}

QJsonObject read(const QString &path)
{
    const Outcome outcome = run({u"read"_s, path});
    if (!outcome.succeeded)
        qWarning("%s", outcome.complaint.constData());
    return QJsonDocument::fromJson(outcome.output).object();
}

QJsonArray objectFrame(const QString &name, const QByteArray &data)
{
    return {u"application/octet-stream"_s, QString(), name, QString::fromLatin1(data.toHex())};
}

} // namespace

class InteropMutagenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void findsTheGainAndAllOtherFrames_data();
    void findsTheGainAndAllOtherFrames();
    void findsRestoredCuesAndAllOtherFrames_data();
    void findsRestoredCuesAndAllOtherFrames();
    void writesWhatIsCapturedHere_data();
    void writesWhatIsCapturedHere();

private:
    TestFolder m_folder;
};

void InteropMutagenTest::initTestCase()
{
    const Outcome outcome = run({u"check"_s});
    QVERIFY2(outcome.succeeded, "mutagen for python3 is missing; scripts/setup.sh --interop "
                                "installs it: " +
                                    outcome.complaint);
}

void InteropMutagenTest::findsTheGainAndAllOtherFrames_data()
{
    addInteropFiles();
}

void InteropMutagenTest::findsTheGainAndAllOtherFrames()
{
    QFETCH(int, version);
    QFETCH(QByteArray, file);
    const QString path = m_folder.write(u"a.mp3"_s, file);
    QJsonObject expected = read(path);
    QCOMPARE(expected[u"version"], (QJsonArray{2, version, 0}));
    QVERIFY(expected[u"seconds"].toDouble() > 2.5);
    QVERIFY(SeratoGEOB::writeReplayGain(-3.2, path).has_value());
    QJsonObject frames = expected[u"frames"].toObject();
    QVERIFY(!frames.isEmpty());
    frames[u"TXXX:REPLAYGAIN_TRACK_GAIN"] = QJsonArray{u"REPLAYGAIN_TRACK_GAIN"_s, u"-3.20 dB"_s};
    expected[u"frames"] = frames;
    QCOMPARE(read(path), expected);
}

void InteropMutagenTest::findsRestoredCuesAndAllOtherFrames_data()
{
    addInteropFiles();
}

void InteropMutagenTest::findsRestoredCuesAndAllOtherFrames()
{
    QFETCH(QByteArray, file);
    const QString path = m_folder.write(u"a.mp3"_s, file);
    QJsonObject expected = read(path);
    QJsonObject frames = expected[u"frames"].toObject();
    SeratoGEOB::CueFrames saved;
    for (const QString &name : {u"Serato Markers2"_s, u"Serato BeatGrid"_s}) {
        const QByteArray data = "restored " + QByteArray(1000, 'c');
        saved[name] = objectPayload(name.toLatin1(), data);
        frames[u"GEOB:"_s + name] = objectFrame(name, data);
    }
    expected[u"frames"] = frames;
    QVERIFY(SeratoGEOB::restoreCueFrames(saved, path).has_value());
    QCOMPARE(read(path), expected);
}

void InteropMutagenTest::writesWhatIsCapturedHere_data()
{
    QTest::addColumn<QString>("version");
    QTest::newRow("version 2.3") << u"3"_s;
    QTest::newRow("version 2.4") << u"4"_s;
}

void InteropMutagenTest::writesWhatIsCapturedHere()
{
    QFETCH(QString, version);
    const QString path = m_folder.write(u"a.mp3"_s, silence());
    const Outcome written = run({u"write"_s, path, version});
    QVERIFY2(written.succeeded, written.complaint);
    const auto captured = SeratoGEOB::captureCueFrames(path);
    QCOMPARE(captured.size(), 3);
    for (auto frame = captured.cbegin(); frame != captured.cend(); ++frame) {
        const QByteArray name = frame.key().toLatin1();
        QCOMPARE(*frame, objectPayload(name, name.repeated(30)));
    }
    // Cues out and in again: nothing is lost, and only the order has changed.
    const QJsonObject before = read(path);
    QVERIFY(SeratoGEOB::stripCueFrames(path).has_value());
    QCOMPARE(read(path)[u"frames"].toObject().size(), before[u"frames"].toObject().size() - 3);
    QVERIFY(SeratoGEOB::restoreCueFrames(captured, path).has_value());
    QCOMPARE(read(path), before);
}

QTEST_GUILESS_MAIN(InteropMutagenTest)
#include "interop_mutagen_test.moc"
