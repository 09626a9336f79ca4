#include "screens/fix_queue/fix_queue_presenter.h"

#include "support/command_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

using FixQueueFigures::Filter;

class FixQueuePresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    void showsNothingWithoutALibrary()
    {
        FixQueuePresenter presenter(m_user->launch(AppState::Environment::Ignored));
        QVERIFY(!presenter.hasLibrary());
        presenter.fix(u"x"_s);
        presenter.decide(u"x"_s);
        presenter.fixAllSafe();
        QVERIFY(!m_user->app().toast());
    }

    void saysThatAnEmptyQueueIsEmpty()
    {
        m_user->addTrack(u"a.mp3"_s, {textRecord("tgen", u"House")});
        FixQueuePresenter presenter(m_user->start());
        QCOMPARE(presenter.emptyText(), u"Queue's empty — nothing needs fixing."_s);
        presenter.setFilter(int(Filter::Safe));
        QCOMPARE(presenter.emptyText(), u"Queue's empty — nothing needs fixing."_s);
        QVERIFY(!presenter.hasSafe());
    }

    void saysThatAFilterKeepsNothing()
    {
        m_user->addMissingTrack(u"gone.mp3"_s);
        FixQueuePresenter presenter(m_user->start());
        QCOMPARE(presenter.emptyText(), QString());
        presenter.setFilter(int(Filter::Safe));
        QCOMPARE(presenter.emptyText(), u"Nothing matches this filter."_s);
        QCOMPARE(presenter.filter(), 4);
        presenter.setFilter(5);
        QCOMPARE(presenter.filter(), 4);
        QCOMPARE(presenter.issues()->rowCount(), 0);
    }

    void countsTheSafeOnesWhateverTheFilter()
    {
        addCopies();
        m_user->addMissingTrack(u"gone.mp3"_s);
        FixQueuePresenter presenter(m_user->start());
        presenter.setFilter(int(Filter::Missing));
        QCOMPARE(presenter.issues()->rowCount(), 1);
        QVERIFY(presenter.hasSafe());
        QCOMPARE(presenter.fixAllTitle(), u"Fix the 1 safe ones"_s);
        presenter.fixAllSafe();
        QVERIFY(!presenter.hasSafe());
        QCOMPARE(m_user->app().result()->total(), 2);
    }

    void fixesOneAndSendsToTheOther()
    {
        addCopies();
        m_user->addMissingTrack(u"gone.mp3"_s);
        FixQueuePresenter presenter(m_user->start());
        presenter.decide(keyAt(presenter, 0));
        QCOMPARE(m_user->app().selection(), Screen::Missing);
        presenter.fix(keyAt(presenter, 0));
        QCOMPARE(m_user->snapshotCount(), 0);
        const QString key = keyAt(presenter, 1);
        presenter.fix(key);
        QCOMPARE(presenter.issues()->rowCount(), 1);
        QCOMPARE(m_user->app().holding().count(), 1);
        presenter.fix(key);
        QCOMPARE(m_user->app().holding().count(), 1);
    }

private:
    void addCopies()
    {
        const QByteArrayList copy = {textRecord("tsng", u"Twice"), textRecord("tgen", u"Pop")};
        m_user->addTrack(u"a.mp3"_s, copy);
        m_user->addTrack(u"b.mp3"_s, copy);
    }
    static QString keyAt(FixQueuePresenter &presenter, int row)
    {
        return presenter.issues()->index(row).data(IssueModel::KeyRole).toString();
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(FixQueuePresenterTest)
#include "fix_queue_presenter_test.moc"
