#include "screens/missing/missing_figures.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

using MissingFigures::Sureness;

class MissingFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCandidateStandsOutByItsConfidence_data()
    {
        QTest::addColumn<int>("confidence");
        QTest::addColumn<int>("sureness");
        const auto row = [](int confidence, Sureness sureness) {
            QTest::addRow("%d", confidence) << confidence << int(sureness);
        };
        row(100, Sureness::Sure);
        row(95, Sureness::Sure);
        row(94, Sureness::Likely);
        row(93, Sureness::Likely);
        row(80, Sureness::Likely);
        row(79, Sureness::Vague);
        row(75, Sureness::Vague);
    }
    void aCandidateStandsOutByItsConfidence()
    {
        QFETCH(const int, confidence);
        QTEST(int(MissingFigures::surenessOf(confidence)), "sureness");
        QCOMPARE(MissingFigures::badge(confidence), QString::number(confidence) + u'%');
    }

    void textsNameTheFile()
    {
        SeratoTrack track;
        track.relativePath = u"Music/Ash/ebb.mp3"_s;
        QCOMPARE(MissingFigures::lastSeen(track), u"Last seen: /Music/Ash/ebb.mp3"_s);
        QCOMPARE(MissingFigures::browseMessage(track), u"Find ebb.mp3"_s);
        RepairEngine::Candidate candidate;
        candidate.url = QUrl::fromLocalFile(u"/home/ash/ebb.mp3"_s);
        candidate.reason = u"Same name"_s;
        QCOMPARE(MissingFigures::source(candidate), candidate.drive() + u" · Same name"_s);
    }
};

QTEST_APPLESS_MAIN(MissingFiguresTest)
#include "missing_figures_test.moc"
