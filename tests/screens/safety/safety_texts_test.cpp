#include "screens/safety/safety_texts.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class SafetyTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void promisesFiveThings()
    {
        const QList<QString> expected = {
            u"Never deletes a file — everything goes to a 30-day holding folder."_s,
            u"Never writes while Serato is running."_s,
            u"Never re-encodes audio — loudness is written as tags only."_s,
            u"Never uploads your audio."_s,
            u"Snapshots the whole _Serato_ folder before every write."_s,
        };
        QCOMPARE(Safety::neverDoes(), expected);
    }

    void leadsToTheFirstChangeInFiveSteps()
    {
        const QList<std::pair<QString, QString>> expected = {
            {u"Full disk access"_s, u"So Tarnwick can read _Serato_ and your audio files."_s},
            {u"Quit Serato"_s, u"Reading is safe; writes are blocked until Serato is closed."_s},
            {u"Pick a library"_s, u"Choose which _Serato_ database to work with."_s},
            {u"First snapshot"_s, u"A copy of the database folder, taken before any change."_s},
            {u"Read-only dry run"_s, u"See every proposed fix before a single write happens."_s},
        };
        QCOMPARE(Safety::steps().size(), expected.size());
        for (int i = 0; i < expected.size(); ++i) {
            QCOMPARE(Safety::steps()[i].title, expected[i].first);
            QCOMPARE(Safety::steps()[i].detail, expected[i].second);
        }
    }
};

QTEST_APPLESS_MAIN(SafetyTextsTest)
#include "safety_texts_test.moc"
