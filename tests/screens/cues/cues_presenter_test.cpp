#include "screens/cues/cues_presenter.h"

#include "support/command_fixture.h"
#include "support/tag_builder.h"
#include "tags/geob_files.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

QByteArray markedFile()
{
    return TagBuilder().object("Serato Markers2").object("Serato BeatGrid").audio("music").file();
}

} // namespace

class CuesPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    void findsNoLossWhereNothingIsLost()
    {
        m_user->addTrack(u"a.mp3"_s, {}, markedFile());
        CuesPresenter presenter(m_user->start());
        QVERIFY(!presenter.hasLosses());
        QCOMPARE(presenter.protectedTracks(), u"1"_s);
        QCOMPARE(presenter.withGrid(), u"1"_s);
        QCOMPARE(presenter.found(), u"0"_s);
        QCOMPARE(presenter.foundTint(), int(Tint::Ink));
        presenter.restore(u"a.mp3"_s);
        presenter.restoreAll();
        QVERIFY(m_user->toasts().isEmpty());
    }

    void putsBackOneLossAfterTheOther()
    {
        loseAll({u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s});
        CuesPresenter presenter(m_user->app());
        const QAbstractItemModelTester tester(presenter.losses());
        QCOMPARE(presenter.found(), u"3"_s);
        QCOMPARE(presenter.foundTint(), int(Tint::Accent));
        QCOMPARE(presenter.restoreAllTitle(), u"Restore all 3"_s);
        const QModelIndex first = presenter.losses()->index(0);
        QCOMPARE(first.data(LossModel::SecondRole), u"a.mp3"_s);
        QVERIFY(first.data(LossModel::LineRole)
                    .toString()
                    .startsWith(u"Lost: Hot cues and beat grid · captured "_s));
        presenter.restore(first.data(LossModel::KeyRole).toString());
        QCOMPARE(presenter.found(), u"2"_s);
        QCOMPARE(presenter.withGrid(), u"1"_s);
        presenter.restoreAll();
        QVERIFY(!presenter.hasLosses());
        QCOMPARE(presenter.withGrid(), u"3"_s);
        QCOMPARE(m_user->snapshotCount(), 3);
    }

private:
    void loseAll(const QStringList &names)
    {
        QStringList paths;
        for (const QString &name : names)
            paths += m_user->addTrack(name, {}, markedFile());
        m_user->start();
        for (const QString &path : paths)
            QVERIFY(SeratoGEOB::stripCueFrames(u'/' + path));
        m_user->app().rescan();
        QVERIFY(m_user->waitUntilIdle());
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(CuesPresenterTest)
#include "cues_presenter_test.moc"
