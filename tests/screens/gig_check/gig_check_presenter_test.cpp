#include "screens/gig_check/gig_check_presenter.h"

#include "support/command_fixture.h"
#include "support/gig_library.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QVariant cell(const QAbstractItemModel &model, int row, int role)
{
    return model.index(row, 0).data(role);
}

/// The rows of a tier as "title: count".
QStringList findings(const GigFindingModel &model)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows += cell(model, row, GigFindingModel::TitleRole).toString() + u": "_s +
                cell(model, row, GigFindingModel::CountRole).toString();
    return rows;
}

/// The crates as "name tracks", the picked ones with a star.
QStringList crates(const GigCrateModel &model)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows += cell(model, row, GigCrateModel::NameRole).toString() + u' ' +
                cell(model, row, GigCrateModel::TracksRole).toString() +
                (cell(model, row, GigCrateModel::PickedRole).toBool() ? u"*"_s : u""_s);
    return rows;
}

} // namespace

/// Two crates: "Flawless" with one track that lacks nothing, and "Messy", which holds that one too.
class GigCheckPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_user = std::make_unique<CommandFixture>();
        m_flawless = m_user->addTrack(u"fine.mp3"_s, preparedFields(u"Fine"_s), preparedFile());
        m_bare = m_user->addTrack(u"bare.mp3"_s, {textRecord("tsng", u"Bare")},
                                  TagBuilder().frame("TIT2", zeros(1) + "Bare").file());
        m_gone = m_user->addMissingTrack(u"gone.mp3"_s);
    }
    void cleanup() { m_user.reset(); }

    void beginsWithAllCratesPicked()
    {
        writeCrates();
        GigCheckPresenter presenter(m_user->start());
        QVERIFY(answers(presenter));
        const QAbstractItemModelTester crateTester(presenter.crates());
        const QAbstractItemModelTester blockerTester(presenter.blockers());
        QCOMPARE(crates(*presenter.crates()), (QStringList{u"Flawless 1*"_s, u"Messy 5*"_s}));
        QVERIFY(presenter.hasCrates());
        QCOMPARE(presenter.picked(), u"2 picked"_s);
        // The path in both crates, the one twice in its crate, and one that no track has.
        QCOMPARE(presenter.tracks(), u"3 tracks"_s);
        QCOMPARE(presenter.verdict(), u"Not yet"_s);
        QCOMPARE(presenter.verdictTint(), int(Tint::Accent));
        QCOMPARE(presenter.sentence(), u"2 blockers would fail to load. Clear these first."_s);
        QCOMPARE(findings(*presenter.blockers()),
                 (QStringList{u"Missing files: 1"_s, u"No beat grid: 1"_s}));
        QCOMPARE(findings(*presenter.polish()), (QStringList{u"No key: 1"_s, u"No hot cues: 1"_s}));
        QVERIFY(!presenter.isEmpty());
        QVERIFY(!presenter.isGood());
    }

    void checksExactlyThePickedCrates()
    {
        writeCrates();
        GigCheckPresenter presenter(m_user->start());
        QVERIFY(answers(presenter));
        const QAbstractItemModelTester tester(presenter.crates());
        presenter.toggle(u"Messy"_s);
        QVERIFY(answers(presenter));
        QCOMPARE(crates(*presenter.crates()), (QStringList{u"Flawless 1*"_s, u"Messy 5"_s}));
        QCOMPARE(presenter.picked(), u"1 picked"_s);
        QCOMPARE(presenter.tracks(), u"1 tracks"_s);
        QCOMPARE(presenter.verdict(), u"Ready"_s);
        QCOMPARE(presenter.verdictTint(), int(Tint::Good));
        QVERIFY(presenter.isGood());
        QCOMPARE(presenter.blockers()->rowCount(), 0);
        presenter.toggle(u"Messy"_s);
        QVERIFY(!presenter.isGood()); // until the answer is there
        QVERIFY(answers(presenter));
        QCOMPARE(presenter.picked(), u"2 picked"_s);
        QCOMPARE(presenter.verdict(), u"Not yet"_s);
    }

    void isGoodEnoughWithPolishAlone()
    {
        const QString low = m_user->addTrack(
            u"low.mp3"_s, {textRecord("tkey", u"8A"), textRecord("tbit", u"128.0kbps")},
            preparedFile());
        writeHomeCrate(m_user->root(), u"Low"_s, {low});
        GigCheckPresenter presenter(m_user->start());
        QVERIFY(answers(presenter));
        QCOMPARE(presenter.verdict(), u"Good enough"_s);
        QCOMPARE(presenter.verdictTint(), int(Tint::Warn));
        QCOMPARE(findings(*presenter.polish()), QStringList{u"Under 256 kbps: 1"_s});
    }

    void theAnswerToTheLastChoiceCounts()
    {
        writeCrates();
        GigCheckPresenter presenter(m_user->start());
        QVERIFY(!presenter.hasReport());
        QCOMPARE(presenter.verdict(), QString());
        QCOMPARE(presenter.tracks(), QString());
        QCOMPARE(presenter.sentence(), QString());
        QVERIFY(!presenter.isEmpty());
        for (int i = 0; i < 30; ++i)
            presenter.toggle(u"Messy"_s);
        presenter.toggle(u"Messy"_s);
        QTRY_VERIFY(presenter.hasReport());
        QCOMPARE(presenter.tracks(), u"1 tracks"_s);
        QTest::qWait(50);
        QCOMPARE(presenter.tracks(), u"1 tracks"_s);
    }

    void anEmptyChoiceIsNotGoodToPlay()
    {
        writeHomeCrate(m_user->root(), u"Flawless"_s, {m_flawless});
        GigCheckPresenter presenter(m_user->start());
        QVERIFY(answers(presenter));
        presenter.toggle(u"Flawless"_s);
        QVERIFY(answers(presenter));
        QVERIFY(presenter.isEmpty());
        QVERIFY(!presenter.isGood());
        QCOMPARE(presenter.verdict(), u"Ready"_s);
        QCOMPARE(presenter.tracks(), u"0 tracks"_s);
        QCOMPARE(presenter.sentence(), u"Nothing selected yet."_s);
    }

    void aLibraryWithoutCrates()
    {
        GigCheckPresenter presenter(m_user->start());
        QVERIFY(answers(presenter));
        QVERIFY(!presenter.hasCrates());
        QCOMPARE(presenter.picked(), u"0 picked"_s);
        QVERIFY(presenter.isEmpty());
    }

    void aChangeOfTheLibraryKeepsTheChoice()
    {
        writeCrates();
        AppState &app = m_user->start();
        GigCheckPresenter presenter(app);
        QVERIFY(answers(presenter));
        const QAbstractItemModelTester tester(presenter.crates());
        presenter.toggle(u"Flawless"_s);
        app.dropFromLibrary(m_user->track(2));
        QVERIFY(answers(presenter));
        QCOMPARE(findings(*presenter.blockers()), QStringList{u"No beat grid: 1"_s});
        QCOMPARE(crates(*presenter.crates()), (QStringList{u"Flawless 1"_s, u"Messy 5*"_s}));
        app.fileOrphans({m_flawless});
        QVERIFY(answers(presenter));
        QCOMPARE(crates(*presenter.crates()),
                 (QStringList{u"Flawless 1"_s, u"Messy 5*"_s, u"Unsorted 1"_s}));
    }

    void aFindingLeadsToWhereItIsMended()
    {
        writeCrates();
        AppState &app = m_user->start();
        GigCheckPresenter presenter(app);
        QVERIFY(answers(presenter));
        presenter.mendBlocker(0);
        QCOMPARE(app.selection(), Screen::Missing);
        presenter.mendBlocker(1);
        QCOMPARE(app.selection(), Screen::Cues);
        presenter.mendPolish(0);
        QCOMPARE(app.selection(), Screen::TrackId);
        presenter.mendPolish(2);
        presenter.mendBlocker(-1);
        QCOMPARE(app.selection(), Screen::TrackId);
    }

    void offersTheDrivesThatAreThere()
    {
        writeHomeCrate(m_user->root(), u"Flawless"_s, {m_flawless});
        m_user->root().makeFolder(u"volumes/STICK"_s);
        GigCheckPresenter presenter(m_user->start());
        QVERIFY(answers(presenter));
        QCOMPARE(presenter.destination(), u"Choose…"_s);
        QCOMPARE(presenter.sentence(),
                 u"Every track is present, gridded and tagged for Choose…."_s);
        QTRY_COMPARE(presenter.destinations(),
                     (QStringList{u"Engine DJ SD"_s, u"rekordbox USB"_s, u"STICK"_s}));
        m_user->root().makeFolder(u"volumes/ARCHIVE"_s);
        presenter.lookForDrives();
        QTRY_COMPARE(presenter.destinations(), (QStringList{u"Engine DJ SD"_s, u"rekordbox USB"_s,
                                                            u"ARCHIVE"_s, u"STICK"_s}));
        presenter.chooseDestination(u"ARCHIVE"_s);
        QCOMPARE(presenter.sentence(),
                 u"Every track is present, gridded and tagged for ARCHIVE."_s);
    }

    void offersTwoWaysWhereDrivesCannotBeListed()
    {
        const platform::ScopedVolumeFolders nowhere({m_user->root().path(u"nowhere"_s)});
        GigCheckPresenter presenter(m_user->start());
        QVERIFY(answers(presenter));
        QSignalSpy changes(&presenter, &GigCheckPresenter::destinationsChanged);
        presenter.lookForDrives();
        QTest::qWait(50);
        QCOMPARE(changes.size(), 0);
        QCOMPARE(presenter.destinations(), (QStringList{u"Engine DJ SD"_s, u"rekordbox USB"_s}));
    }

private:
    /// Waits for the answer to what was asked last.
    static bool answers(GigCheckPresenter &presenter)
    {
        return QSignalSpy(&presenter, &GigCheckPresenter::changed).wait(5000);
    }
    void writeCrates()
    {
        writeHomeCrate(m_user->root(), u"Flawless"_s, {m_flawless});
        writeHomeCrate(m_user->root(), u"Messy"_s,
                       {m_bare, m_gone, m_flawless, m_bare, u"never/was.mp3"_s});
    }

    std::unique_ptr<CommandFixture> m_user;
    QString m_flawless;
    QString m_bare;
    QString m_gone;
};

QTEST_GUILESS_MAIN(GigCheckPresenterTest)
#include "gig_check_presenter_test.moc"
