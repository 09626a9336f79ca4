#include "screens/track_id/track_id_presenter.h"

#include "screens/components/tint.h"
#include "support/command_fixture.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

using Model = UntaggedModel;

class TrackIdPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    void showsNothingWithoutALibrary()
    {
        TrackIdPresenter presenter(m_user->launch(AppState::Environment::Ignored));
        QVERIFY(!presenter.hasLibrary());
        QVERIFY(!presenter.canWrite());
        presenter.tag(u"x"_s);
        presenter.tagAll();
        QVERIFY(!m_user->app().toast());
    }

    void showsALibraryWhereEveryTrackHasAGenre()
    {
        addTagged(u"Ash"_s, u"Pop"_s);
        TrackIdPresenter presenter(m_user->start());
        QVERIFY(presenter.hasLibrary());
        QVERIFY(presenter.canWrite());
        QVERIFY(!presenter.hasUntagged());
        QVERIFY(!presenter.hasReady());
        QCOMPARE(presenter.untagged(), u"0"_s);
        QCOMPARE(presenter.tracks()->rowCount(), 0);
    }

    void saysWhatEachArtistSuggests()
    {
        addTagged(u"Ash"_s, u"Pop"_s);
        addUntagged(u"Ash"_s, u"1"_s);
        addUntagged({}, u"2"_s);
        TrackIdPresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.tracks());
        QCOMPARE(presenter.tracks()->rowCount(), 2);
        QCOMPARE(shown(presenter, 0, Model::FirstRole), u"Ash — 1"_s);
        QCOMPARE(shown(presenter, 0, Model::SecondRole), u"Ash1.mp3"_s);
        QCOMPARE(shown(presenter, 0, Model::ConfidenceRole), u"100%"_s);
        QCOMPARE(shown(presenter, 0, Model::GenreRole), u"Pop"_s);
        QVERIFY(acts(presenter, 0));
        QCOMPARE(shown(presenter, 1, Model::FirstRole), u"2"_s);
        QCOMPARE(shown(presenter, 1, Model::ConfidenceRole), QString());
        QCOMPARE(shown(presenter, 1, Model::MoreRole), QString());
        QVERIFY(!acts(presenter, 1));
        QCOMPARE(presenter.untagged(), u"2"_s);
        QCOMPARE(presenter.suggested(), u"1"_s);
        QCOMPARE(presenter.ready(), u"1"_s);
        QCOMPARE(presenter.offer(),
                 u"1 tracks match a genre you've already used for that artist"_s);
        QCOMPARE(presenter.tagAllTitle(), u"Tag all 1"_s);
    }

    void takesNothingBelowNinetyFiveIntoTheBatch_data()
    {
        QTest::addColumn<int>("same");
        QTest::addColumn<QString>("confidence");
        QTest::addColumn<int>("tint");
        QTest::addColumn<QString>("ready");
        QTest::newRow("16 of 17") << 16 << u"94%"_s << int(Tint::Warn) << u"0"_s;
        QTest::newRow("18 of 19") << 18 << u"94%"_s << int(Tint::Warn) << u"0"_s;
        QTest::newRow("19 of 20") << 19 << u"95%"_s << int(Tint::Good) << u"1"_s;
    }
    void takesNothingBelowNinetyFiveIntoTheBatch()
    {
        QFETCH(const int, same);
        for (int i = 0; i < same; ++i)
            addTagged(u"Ash"_s, u"Pop"_s, QString::number(i));
        addTagged(u"Ash"_s, u"Soul"_s, u"other"_s);
        addUntagged(u"Ash"_s, u"Dawn"_s);
        TrackIdPresenter presenter(m_user->start());
        QTEST(shown(presenter, 0, Model::ConfidenceRole), "confidence");
        QTEST(presenter.tracks()->index(0).data(Model::TintRole).toInt(), "tint");
        QVERIFY(acts(presenter, 0));
        QCOMPARE(presenter.suggested(), u"1"_s);
        QTEST(presenter.ready(), "ready");
    }

    void showsSixtyRowsAndCountsTheRest_data()
    {
        QTest::addColumn<int>("untagged");
        QTest::addColumn<QString>("more");
        QTest::newRow("60") << 60 << QString();
        QTest::newRow("61") << 61 << u"+ 1 more — tag these first, then rescan."_s;
        QTest::newRow("75") << 75 << u"+ 15 more — tag these first, then rescan."_s;
    }
    void showsSixtyRowsAndCountsTheRest()
    {
        QFETCH(const int, untagged);
        QFETCH(const QString, more);
        addTagged(u"Ash"_s, u"Pop"_s);
        for (int i = 0; i < untagged; ++i)
            addUntagged(u"Ash"_s, QString::number(i));
        TrackIdPresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.tracks());
        QCOMPARE(presenter.tracks()->rowCount(), more.isEmpty() ? 60 : 61);
        QCOMPARE(shown(presenter, 59, Model::FirstRole), u"Ash — 59"_s);
        if (!more.isEmpty()) {
            QCOMPARE(shown(presenter, 60, Model::MoreRole), more);
            QVERIFY(!acts(presenter, 60));
            presenter.tag(shown(presenter, 60, Model::KeyRole));
            QCOMPARE(m_user->snapshotCount(), 0);
        }
        QCOMPARE(presenter.untagged(), QString::number(untagged));
        QCOMPARE(presenter.suggested(), QString::number(untagged));
        QCOMPARE(presenter.ready(), QString::number(untagged));
    }

    void tagsOneTrackWhichThenDropsOut()
    {
        addTagged(u"Ash"_s, u"Pop"_s);
        addUntagged(u"Ash"_s, u"1"_s);
        addUntagged(u"Ash"_s, u"2"_s);
        TrackIdPresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.tracks());
        const QString key = shown(presenter, 0, Model::KeyRole);
        presenter.tag(key);
        QCOMPARE(shown(presenter, 0, Model::FirstRole), u"Ash — 2"_s);
        QCOMPARE(presenter.tagAllTitle(), u"Tag all 1"_s);
        QCOMPARE(chosen(m_user->newestEntry()),
                 u"tag | Ash1.mp3 | Genre set to Pop | — | Pop | 30"_s);
        QCOMPARE(m_user->app().snapshots().constFirst().reason, u"Before: tag Ash1.mp3"_s);
        QVERIFY(m_user->toasts().isEmpty());
        presenter.tag(key);
        QCOMPARE(m_user->snapshotCount(), 1);
        m_user->restart();
        QCOMPARE(m_user->track(1).track.genre, u"Pop"_s);
    }

    void leavesATrackWithoutASuggestionAlone()
    {
        addUntagged(u"Ash"_s, u"1"_s);
        TrackIdPresenter presenter(m_user->start());
        presenter.tag(shown(presenter, 0, Model::KeyRole));
        QCOMPARE(m_user->snapshotCount(), 0);
    }

    void readsTheFiguresOncePerChange()
    {
        addTagged(u"Ash"_s, u"Pop"_s);
        addUntagged(u"Ash"_s, u"1"_s);
        addUntagged(u"Ash"_s, u"2"_s);
        TrackIdPresenter presenter(m_user->start());
        const QSignalSpy changed(&presenter, &TrackIdPresenter::changed);
        presenter.tagAll();
        QCOMPARE(changed.count(), 1);
        QVERIFY(!presenter.hasUntagged());
    }

private:
    void addTagged(const QString &artist, const QString &genre, const QString &title = {})
    {
        m_user->addTrack(u"tagged%1%2.mp3"_s.arg(artist, title),
                         {textRecord("tart", artist), textRecord("tgen", genre)});
    }
    void addUntagged(const QString &artist, const QString &title)
    {
        m_user->addTrack(artist + title + u".mp3"_s,
                         {textRecord("tart", artist), textRecord("tsng", title)});
    }
    static QString shown(TrackIdPresenter &presenter, int row, Model::Role role)
    {
        return presenter.tracks()->index(row).data(role).toString();
    }
    static bool acts(TrackIdPresenter &presenter, int row)
    {
        return presenter.tracks()->index(row).data(Model::ActsRole).toBool();
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(TrackIdPresenterTest)
#include "track_id_presenter_test.moc"
