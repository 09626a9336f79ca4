#include "screens/missing/missing_presenter.h"

#include "platform/file_choice.h"
#include "screens/components/tint.h"
#include "support/command_fixture.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

constexpr auto searching = u"Searching your drives…";
constexpr auto nothingFound =
    u"No candidates found on the indexed drives. Use Browse… to point at the file.";

QVariant cell(const QAbstractItemModel &model, int row, int role)
{
    return model.index(row, 0).data(role);
}

} // namespace

class MissingPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    void listsTheMissingTracksInLibraryOrder()
    {
        m_user->addMissingTrack(u"Music/z.mp3"_s,
                                {textRecord("tart", u"Ash"), textRecord("tsng", u"Ebb")});
        m_user->addTrack(u"there.mp3"_s);
        m_user->addMissingTrack(u"Music/a.mp3"_s);
        MissingPresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.tracks());
        QCOMPARE(presenter.tracks()->rowCount(), 2);
        QCOMPARE(cell(*presenter.tracks(), 0, MissingModel::FirstRole), u"Ash — Ebb"_s);
        QCOMPARE(cell(*presenter.tracks(), 0, MissingModel::SecondRole), u"z.mp3"_s);
        QCOMPARE(cell(*presenter.tracks(), 0, MissingModel::LastSeenRole),
                 QString(u"Last seen: "_s + m_user->home(u"Music/z.mp3"_s)));
        QCOMPARE(cell(*presenter.tracks(), 0, MissingModel::ExpandedRole), false);
        presenter.drop(key(presenter, 0));
        QCOMPARE(presenter.tracks()->rowCount(), 1);
        QCOMPARE(m_user->app().result()->total(), 2);
    }

    void opensTheRowOfItsOwnWhereTwoRecordsNameOnePath()
    {
        m_user->addMissingTrack(u"Music/gone.mp3"_s);
        m_user->addMissingTrack(u"Music/gone.mp3"_s);
        MissingPresenter presenter(m_user->start());
        presenter.toggle(key(presenter, 1));
        QCOMPARE(cell(*presenter.tracks(), 0, MissingModel::ExpandedRole), false);
        QCOMPARE(cell(*presenter.tracks(), 1, MissingModel::ExpandedRole), true);
    }

    void offersWhereTheFileMightBe()
    {
        m_user->addMissingTrack(u"Music/ebb.mp3"_s, {numberRecord("ufsb", 4)});
        m_user->writeAudio(u"Moved/ebb.mp3"_s, "1234");
        MissingPresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.candidates());
        const QString track = key(presenter, 0);
        presenter.toggle(track);
        QCOMPARE(presenter.panelText(), searching);
        QCOMPARE(cell(*presenter.tracks(), 0, MissingModel::ExpandedRole), true);
        QTRY_COMPARE(presenter.candidates()->rowCount(), 1);
        QCOMPARE(presenter.panelText(), QString());
        const CandidateModel &found = *presenter.candidates();
        QCOMPARE(cell(found, 0, CandidateModel::FileRole), u"ebb.mp3"_s);
        const auto &candidate = found.candidateAt(0);
        QCOMPARE(cell(found, 0, CandidateModel::BadgeRole),
                 QString(QString::number(candidate.confidence) + u'%'));
        QCOMPARE(cell(found, 0, CandidateModel::SourceRole),
                 QString(candidate.drive() + u" · "_s + candidate.reason));
        presenter.relink(track, 1);
        QVERIFY(presenter.hasMissing());
        presenter.relink(track, 0);
        QVERIFY(!presenter.hasMissing());
        QCOMPARE(m_user->track(0).track.absolutePath(), m_user->home(u"Moved/ebb.mp3"_s));
    }

    void aBadgeShowsHowSureItIs()
    {
        CandidateModel model;
        QList<RepairEngine::Candidate> candidates(3);
        candidates[0].confidence = 100;
        candidates[1].confidence = 93;
        candidates[2].confidence = 75;
        model.setCandidates(candidates);
        QCOMPARE(cell(model, 0, CandidateModel::TintRole), int(Tint::Good));
        QCOMPARE(cell(model, 1, CandidateModel::TintRole), int(Tint::Warn));
        QCOMPARE(cell(model, 2, CandidateModel::TintRole), int(Tint::Neutral));
    }

    void opensOnePanelAtATimeAndSearchesOnce()
    {
        m_user->addMissingTrack(u"Music/a.mp3"_s);
        m_user->addMissingTrack(u"Music/b.mp3"_s);
        MissingPresenter presenter(m_user->start());
        QCOMPARE(presenter.panelText(), QString());
        presenter.toggle(key(presenter, 0));
        QTRY_COMPARE(presenter.panelText(), nothingFound);
        presenter.toggle(key(presenter, 1));
        QCOMPARE(cell(*presenter.tracks(), 0, MissingModel::ExpandedRole), false);
        QCOMPARE(cell(*presenter.tracks(), 1, MissingModel::ExpandedRole), true);
        QCOMPARE(presenter.panelText(), searching);
        QTRY_COMPARE(presenter.panelText(), nothingFound);
        // What has come up since is not looked for again.
        m_user->writeAudio(u"Moved/a.mp3"_s);
        presenter.toggle(key(presenter, 0));
        QCOMPARE(presenter.panelText(), nothingFound);
        presenter.toggle(key(presenter, 0));
        QCOMPARE(presenter.panelText(), QString());
        QCOMPARE(cell(*presenter.tracks(), 0, MissingModel::ExpandedRole), false);
    }

    void asksTheUserForTheFile()
    {
        m_user->addMissingTrack(u"Music/ebb.mp3"_s);
        const QString there = u'/' + m_user->writeAudio(u"Elsewhere/tide.mp3"_s);
        MissingPresenter presenter(m_user->start());
        QStringList asked;
        QString answer;
        const platform::ScopedFileDialog dialog(
            [&](const platform::FileQuestion &question, const platform::FileChosen &chosen) {
                asked += question.message;
                if (!answer.isEmpty())
                    chosen(answer);
            });
        presenter.browse(key(presenter, 0));
        QVERIFY(presenter.hasMissing());
        answer = there;
        presenter.browse(key(presenter, 0));
        QCOMPARE(asked, QStringList({u"Find ebb.mp3"_s, u"Find ebb.mp3"_s}));
        QVERIFY(!presenter.hasMissing());
        QCOMPARE(m_user->track(0).track.absolutePath(), there);
    }

    void doesNothingForARowThatHasGone()
    {
        m_user->addTrack(u"a.mp3"_s);
        MissingPresenter presenter(m_user->start());
        presenter.toggle(u"a.mp3"_s);
        presenter.browse(u"a.mp3"_s);
        presenter.drop(u"a.mp3"_s);
        presenter.relink(u"a.mp3"_s, 0);
        QVERIFY(m_user->toasts().isEmpty());
        QCOMPARE(presenter.panelText(), QString());
    }

private:
    static QString key(MissingPresenter &presenter, int row)
    {
        return cell(*presenter.tracks(), row, MissingModel::KeyRole).toString();
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(MissingPresenterTest)
#include "missing_presenter_test.moc"
