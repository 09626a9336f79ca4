#include "screens/loudness/loudness_presenter.h"

#include "support/command_fixture.h"
#include "support/gain_files.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

using Model = StandingModel;

class LoudnessPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    void showsNothingWithoutALibrary()
    {
        LoudnessPresenter presenter(m_user->launch(AppState::Environment::Ignored));
        QVERIFY(!presenter.hasLibrary());
        QVERIFY(!presenter.canWrite());
        presenter.level(u"x"_s);
        presenter.levelAll();
        QVERIFY(!m_user->app().toast());
    }

    void showsALibraryThatSeratoHasNotAnalysed()
    {
        m_user->addTrack(u"a.mp3"_s);
        LoudnessPresenter presenter(m_user->start());
        QVERIFY(presenter.hasLibrary());
        QVERIFY(!presenter.hasTracks());
        QVERIFY(!presenter.hasOutliers());
        QCOMPARE(presenter.analysed(), u"0"_s);
        QCOMPARE(presenter.average(), u"0.0 dB"_s);
        QCOMPARE(presenter.outliers(), u"0"_s);
        QCOMPARE(presenter.outliersTint(), int(Tint::Good));
        presenter.levelAll();
        QVERIFY(m_user->toasts().isEmpty());
    }

    void countsAnOutlierFromOneAndAHalfOn_data()
    {
        QTest::addColumn<QByteArray>("gain");
        QTest::addColumn<QString>("outliers");
        QTest::addColumn<int>("tint");
        QTest::addColumn<int>("rowTint");
        QTest::newRow("1.5") << QByteArray("1.5") << u"2"_s << int(Tint::Warn) << int(Tint::Warn);
        QTest::newRow("1.49") << QByteArray("1.49") << u"0"_s << int(Tint::Good)
                              << int(Tint::InkSoft);
    }
    void countsAnOutlierFromOneAndAHalfOn()
    {
        QFETCH(const QByteArray, gain);
        addAnalysed(u"up"_s, gain);
        addAnalysed(u"down"_s, '-' + gain);
        LoudnessPresenter presenter(m_user->start());
        QTEST(presenter.outliers(), "outliers");
        QTEST(presenter.outliersTint(), "tint");
        QTEST(presenter.tracks()->index(0).data(Model::TintRole).toInt(), "rowTint");
        QCOMPARE(presenter.hasOutliers(), gain == "1.5");
    }

    void saysHowFarEachTrackStandsTheFurthestFirst()
    {
        addAnalysed(u"near"_s, "-1");
        addAnalysed(u"far"_s, "-6");
        m_user->addTrack(u"levelled.mp3"_s, {textRecord("tsng", u"levelled")}, levelledFile("1"));
        LoudnessPresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.tracks());
        QCOMPARE(presenter.analysed(), u"3"_s);
        QCOMPARE(presenter.average(), u"-2.0 dB"_s);
        QCOMPARE(rowsOf(presenter), QStringList({u"far|far.mp3|+4.0 dB|Level -4.0"_s,
                                                 u"levelled|levelled.mp3|-3.0 dB|tagged"_s,
                                                 u"near|near.mp3|-1.0 dB|Level +1.0"_s}));
        QCOMPARE(presenter.tracks()->index(0).data(Model::DeviationRole).toDouble(), 4.0);
        QCOMPARE(presenter.offer(), u"2 tracks stand out from the library average"_s);
        QCOMPARE(presenter.levelAllTitle(), u"Level all 2"_s);
    }

    void levelsOneTrack()
    {
        addAnalysed(u"loud"_s, "-4");
        addAnalysed(u"soft"_s, "4");
        LoudnessPresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.tracks());
        presenter.level(presenter.tracks()->index(0).data(Model::KeyRole).toString());
        QCOMPARE(m_user->toasts(), QStringList({u"Wrote gain tag for loud.mp3 [Undo]"_s}));
        QVERIFY(contentOf(m_user->home(u"loud.mp3"_s)).contains("-4.00 dB"));
        QVERIFY(!contentOf(m_user->home(u"soft.mp3"_s)).contains("4.00 dB"));
        QCOMPARE(rowsOf(presenter), QStringList({u"loud|loud.mp3|+4.0 dB|tagged"_s,
                                                 u"soft|soft.mp3|-4.0 dB|Level +4.0"_s}));
        presenter.level(u"gone"_s);
        QCOMPARE(m_user->snapshotCount(), 1);
    }

    void levelsEveryOutlierBeyondTheRowsOnShow()
    {
        for (int i = 0; i < 30; ++i) {
            addAnalysed(u"loud%1"_s.arg(i), "-3");
            m_user->addTrack(u"soft%1.mp3"_s.arg(i), {}, levelledFile("3"));
        }
        addAnalysed(u"even"_s, "0");
        LoudnessPresenter presenter(m_user->start());
        QCOMPARE(presenter.tracks()->rowCount(), 50);
        QCOMPARE(presenter.analysed(), u"61"_s);
        QCOMPARE(presenter.outliers(), u"60"_s);
        QCOMPARE(presenter.levelAllTitle(), u"Level all 60"_s);
        const QSignalSpy changed(&presenter, &LoudnessPresenter::changed);
        presenter.levelAll();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(m_user->toasts(), QStringList({u"Levelled 60 tracks — tags only [Undo]"_s}));
        for (int i = 0; i < 30; ++i) {
            QVERIFY(contentOf(m_user->home(u"loud%1.mp3"_s.arg(i))).contains("-3.00 dB"));
            QVERIFY(contentOf(m_user->home(u"soft%1.mp3"_s.arg(i))).contains("3.00 dB"));
        }
        QVERIFY(!contentOf(m_user->home(u"even.mp3"_s)).contains(" dB"));
    }

private:
    void addAnalysed(const QString &title, const QByteArray &autogain)
    {
        m_user->addTrack(title + u".mp3"_s, {textRecord("tsng", title)}, analysedFile(autogain));
    }
    static QStringList rowsOf(LoudnessPresenter &presenter)
    {
        QStringList rows;
        for (int row = 0; row < presenter.tracks()->rowCount(); ++row) {
            const QModelIndex index = presenter.tracks()->index(row);
            const bool acts = index.data(Model::ActsRole).toBool();
            rows << QStringList({index.data(Model::FirstRole).toString(),
                                 index.data(Model::SecondRole).toString(),
                                 index.data(Model::DeviationTextRole).toString(),
                                 acts ? index.data(Model::LevelTitleRole).toString() : u"tagged"_s})
                        .join(u'|');
        }
        return rows;
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(LoudnessPresenterTest)
#include "loudness_presenter_test.moc"
