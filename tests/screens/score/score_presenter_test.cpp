#include "screens/score/score_presenter.h"

#include "support/app_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray track(QStringView path, QStringView artist, QStringView title, QStringView genre = {},
                 QStringView key = {}, QStringView bpm = {})
{
    return trackRecord({textRecord("pfil", path), textRecord("tart", artist),
                        textRecord("tsng", title), textRecord("tgen", genre),
                        textRecord("tkey", key), textRecord("tbpm", bpm)});
}

} // namespace

class ScorePresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<AppFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void showsNothingWithoutALibrary()
    {
        ScorePresenter presenter(m_fixture->launch(AppState::Environment::Ignored));
        QVERIFY(!presenter.hasScore());
        presenter.goToNext();
        QCOMPARE(m_fixture->app().selection(), Screen::LibraryScore);
    }

    void showsAnEmptyLibraryAsPerfect()
    {
        m_fixture->writeHomeDatabase({});
        ScorePresenter presenter(m_fixture->launchAndScan());
        QVERIFY(presenter.hasScore());
        QCOMPARE(presenter.score(), 100);
        QCOMPARE(presenter.tint(), int(Tint::Good));
        QCOMPARE(presenter.grade(), u"This library is gig-ready."_s);
        QCOMPARE(presenter.source(), u"System disk · 0 tracks · scanned just now"_s);
        QCOMPARE(presenter.nextName(), u"Files & links"_s);
        QCOMPARE(presenter.nextButton(), u"Go to Missing files"_s);
        QCOMPARE(presenter.dimensions()->rowCount(), 6);
    }

    void sendsToTheEarliestOfEqualDimensions()
    {
        // Nothing on disk and nothing tagged: files, tags and export all stand at 0.
        m_fixture->writeHomeDatabase({track(u"nowhere/a.mp3", {}, u"A")});
        ScorePresenter presenter(m_fixture->launchAndScan());
        QCOMPARE(presenter.nextName(), u"Files & links"_s);
        QCOMPARE(presenter.nextDetail(), u"1 file can't be found"_s);
        presenter.goToNext();
        QCOMPARE(m_fixture->app().selection(), Screen::Missing);
    }

    void sendsToTheExportScreenWhereExportIsWorst()
    {
        const QString path = m_fixture->writeAudio(u"Music/dawn.mp3"_s);
        m_fixture->writeHomeDatabase({track(path, u"Ash", u"Dawn", u"House")});
        ScorePresenter presenter(m_fixture->launchAndScan());
        QCOMPARE(presenter.nextName(), u"Export parity"_s);
        QCOMPARE(presenter.nextButton(), u"Go to USB & export"_s);
        presenter.goToNext();
        QCOMPARE(m_fixture->app().selection(), Screen::Export);
    }

    void followsTheLibrary()
    {
        m_fixture->writeHomeDatabase({track(u"nowhere/a.mp3", {}, u"A")});
        AppState &app = m_fixture->launchAndScan();
        ScorePresenter presenter(app);
        const int before = presenter.score();
        const QSignalSpy changed(&presenter, &ScorePresenter::changed);
        m_fixture->writeHomeDatabase({});
        app.rescan();
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(changed.count(), 1);
        QVERIFY(presenter.score() > before);
        QCOMPARE(presenter.source(), u"System disk · 0 tracks · scanned just now"_s);
    }

private:
    std::unique_ptr<AppFixture> m_fixture;
};

QTEST_GUILESS_MAIN(ScorePresenterTest)
#include "score_presenter_test.moc"
