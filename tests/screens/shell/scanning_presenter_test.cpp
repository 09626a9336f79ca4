#include "screens/shell/scanning_presenter.h"

#include "support/app_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class ScanningPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<AppFixture>();
        QByteArrayList tracks;
        for (int i = 0; i < 2000; ++i)
            tracks += trackRecord({textRecord("pfil", u"nowhere/%1.mp3"_s.arg(i))});
        m_fixture->writeHomeDatabase(tracks);
        m_fixture->launch(AppState::Environment::Ignored);
        m_fixture->app().rescan();
    }
    void cleanup() { m_fixture.reset(); }

    void beginsWithTheDatabase()
    {
        const ScanningPresenter presenter(m_fixture->app());
        QCOMPARE(presenter.phase(), u"Reading database…"_s);
        QCOMPARE(presenter.count(), u"0 of 0 tracks"_s);
        QCOMPARE(presenter.fraction(), 0.0);
        QCOMPARE(presenter.filesOnDisk(), u"0"_s);
        QCOMPARE(presenter.missing(), u"0"_s);
        QVERIFY(m_fixture->waitUntilIdle());
    }

    void tellsTheLastReport()
    {
        ScanningPresenter presenter(m_fixture->app());
        connect(&m_fixture->app(), &AppState::progressReported, &presenter,
                &ScanningPresenter::tellNow);
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(presenter.phase(), u"Scoring…"_s);
        QCOMPARE(presenter.count(), u"2000 of 2000 tracks"_s);
        QCOMPARE(presenter.fraction(), 1.0);
        QCOMPARE(presenter.missing(), u"2000"_s);
    }

    void tellsTheReportsBetweenTwoFramesAsOne()
    {
        const ScanningPresenter presenter(m_fixture->app());
        const QSignalSpy reports(&m_fixture->app(), &AppState::progressReported);
        const QSignalSpy told(&presenter, &ScanningPresenter::changed);
        QElapsedTimer timer;
        timer.start();
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(reports.count() >= 80);
        QVERIFY2(told.count() <= timer.elapsed() / 16 + 1,
                 qPrintable(QString::number(told.count())));
    }

private:
    std::unique_ptr<AppFixture> m_fixture;
};

QTEST_GUILESS_MAIN(ScanningPresenterTest)
#include "scanning_presenter_test.moc"
