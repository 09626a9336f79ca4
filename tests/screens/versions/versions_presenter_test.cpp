#include "screens/versions/versions_presenter.h"

#include "screens/components/tint.h"
#include "support/command_fixture.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class VersionsPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    void hasNothingBeforeTheFirstScan()
    {
        VersionsPresenter presenter(m_user->launch(AppState::Environment::Ignored));
        QVERIFY(!presenter.hasLibrary());
        QVERIFY(!presenter.hasNoGroups());
        QCOMPARE(presenter.rows()->rowCount(), 0);
    }

    void saysThatThereAreNoneOnceItIsKnown()
    {
        m_user->addTrack(u"a.mp3"_s, {textRecord("tsng", u"Alone")});
        VersionsPresenter presenter(m_user->start());
        const QSignalSpy changed(&presenter, &VersionsPresenter::changed);
        QVERIFY(presenter.hasLibrary());
        QVERIFY(!presenter.hasNoGroups());
        QVERIFY(m_user->waitUntilIdle());
        QVERIFY(presenter.hasNoGroups());
        QCOMPARE(changed.size(), 1);
        presenter.choose(u"x"_s, 0);
        presenter.archive(u"x"_s);
        QVERIFY(m_user->toasts().isEmpty());
    }

    void givesEachSongAHeadItsCutsAndAFoot()
    {
        addCut(u"a.mp3"_s, u"Ebb"_s, 0);
        addCut(u"b.mp3"_s, u"Tide"_s, 0);
        addCut(u"c.mp3"_s, u"Tide (Club Mix)"_s, 1);
        addCut(u"d.mp3"_s, u"Ebb (Live)"_s, 2);
        addCut(u"e.mp3"_s, u"Tide (Dub)"_s, 0);
        VersionsPresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.rows());
        QVERIFY(m_user->waitUntilIdle());
        QVERIFY(!presenter.hasNoGroups());
        QCOMPARE(
            shown(presenter),
            QStringList({u"Ash — Tide, 3 cuts"_s,
                         u"(•) Club mix: Ash — Tide (Club Mix), c.mp3, 1 play"_s,
                         u"( ) Original: Ash — Tide, b.mp3, 0 plays"_s,
                         u"( ) Dub: Ash — Tide (Dub), e.mp3, 0 plays"_s, u"foot"_s,
                         u"Ash — Ebb, 2 cuts"_s, u"(•) Live: Ash — Ebb (Live), d.mp3, 2 plays"_s,
                         u"( ) Original: Ash — Ebb, a.mp3, 0 plays"_s, u"foot"_s}));
        QCOMPARE(cell(presenter, 0, VersionModel::ActsRole), false);
        QCOMPARE(cell(presenter, 1, VersionModel::ActsRole), true);
        QCOMPARE(cell(presenter, 4, VersionModel::ActsRole), true);
        QCOMPARE(cell(presenter, 1, VersionModel::PlaysTintRole), int(Tint::Ink));
        QCOMPARE(cell(presenter, 2, VersionModel::PlaysTintRole), int(Tint::InkFaint));
        QCOMPARE(cell(presenter, 2, VersionModel::PlaceRole), 1);
    }

    void ofCutsThatWereNeverPlayedTheFirstIsKept()
    {
        addCut(u"z.mp3"_s, u"Ebb (Live)"_s, 0);
        addCut(u"a.mp3"_s, u"Ebb"_s, 0);
        VersionsPresenter presenter(m_user->start());
        QVERIFY(m_user->waitUntilIdle());
        QCOMPARE(shown(presenter).sliced(1, 2),
                 QStringList({u"(•) Live: Ash — Ebb (Live), z.mp3, 0 plays"_s,
                              u"( ) Original: Ash — Ebb, a.mp3, 0 plays"_s}));
    }

    void aChoiceFallsBackToTheMostPlayedCut()
    {
        addCut(u"a.mp3"_s, u"Ebb"_s, 0);
        addCut(u"d.mp3"_s, u"Ebb (Live)"_s, 2);
        VersionsPresenter presenter(m_user->start());
        QVERIFY(m_user->waitUntilIdle());
        const QStringList before = shown(presenter);
        const QSignalSpy drawn(presenter.rows(), &QAbstractItemModel::dataChanged);
        for (const int place : {1, 2, -1, 0})
            presenter.choose(group(presenter, 0), place);
        QCOMPARE(drawn.size(), 2);
        QCOMPARE(shown(presenter), before);
        presenter.choose(group(presenter, 0), 1);
        presenter.archive(group(presenter, 0));
        QCOMPARE(m_user->toasts(), QStringList{u"Archived 1 cut of Ash — Ebb [Undo]"_s});
        QCOMPARE(crateFile(), QByteArray(crateVersion() + crateEntry(m_user->paths().at(0))));
    }

    void archivesAllButTheMostPlayed()
    {
        addCut(u"a.mp3"_s, u"Tide"_s, 1);
        addCut(u"b.mp3"_s, u"Tide (Dub)"_s, 5);
        addCut(u"c.mp3"_s, u"Tide (Club Mix)"_s, 3);
        VersionsPresenter presenter(m_user->start());
        QVERIFY(m_user->waitUntilIdle());
        const QStringList before = shown(presenter);
        presenter.archive(group(presenter, 0));
        QCOMPARE(m_user->toasts(), QStringList{u"Archived 2 cuts of Ash — Tide [Undo]"_s});
        QCOMPARE(crateFile(), QByteArray(crateVersion() + crateEntry(m_user->paths().at(2)) +
                                         crateEntry(m_user->paths().at(0))));
        // They stay in the library, so they stay on show.
        QCOMPARE(shown(presenter), before);
        QCOMPARE(m_user->app().result()->total(), 3);
    }

    void followsALibraryThatChanges()
    {
        addCut(u"a.mp3"_s, u"Ebb"_s, 0);
        addCut(u"d.mp3"_s, u"Ebb (Live)"_s, 2);
        addCut(u"e.mp3"_s, u"Ebb (Dub)"_s, 1);
        VersionsPresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.rows());
        QVERIFY(m_user->waitUntilIdle());
        const QSignalSpy reset(presenter.rows(), &QAbstractItemModel::modelReset);
        m_user->app().dropFromLibrary(ScannedTrack(m_user->track(1)));
        QCOMPARE(shown(presenter),
                 QStringList({u"Ash — Ebb, 2 cuts"_s, u"(•) Dub: Ash — Ebb (Dub), e.mp3, 1 play"_s,
                              u"( ) Original: Ash — Ebb, a.mp3, 0 plays"_s, u"foot"_s}));
        QCOMPARE(reset.size(), 0);
    }

    void takesNoVersionsOfALibraryThatIsNoMore()
    {
        addCut(u"a.mp3"_s, u"Ebb"_s, 0);
        addCut(u"d.mp3"_s, u"Ebb (Live)"_s, 2);
        VersionsPresenter presenter(m_user->start());
        m_user->app().dropFromLibrary(ScannedTrack(m_user->track(1)));
        QVERIFY(m_user->waitUntilIdle());
        QVERIFY(presenter.hasNoGroups());
    }

private:
    void addCut(const QString &name, const QString &title, quint32 plays)
    {
        m_user->addTrack(name, {textRecord("tart", u"Ash"), textRecord("tsng", title),
                                numberRecord("utpc", plays)});
    }
    QByteArray crateFile() const
    {
        return contentOf(m_user->home(u"Music/_Serato_/Subcrates/Archive.crate"_s));
    }
    static QVariant cell(VersionsPresenter &presenter, int row, int role)
    {
        return presenter.rows()->index(row).data(role);
    }
    static QString group(VersionsPresenter &presenter, int row)
    {
        return cell(presenter, row, VersionModel::GroupRole).toString();
    }
    static QString rowText(VersionsPresenter &presenter, int row)
    {
        const auto text = [&](int role) { return cell(presenter, row, role).toString(); };
        switch (cell(presenter, row, VersionModel::KindRole).toInt()) {
        case VersionModel::Head:
            return text(VersionModel::BaseRole) + u", "_s + text(VersionModel::CountRole);
        case VersionModel::Member:
            return (cell(presenter, row, VersionModel::KeptRole).toBool() ? u"(•) "_s : u"( ) "_s) +
                   text(VersionModel::CutRole) + u": "_s + text(VersionModel::FirstRole) + u", "_s +
                   text(VersionModel::SecondRole) + u", "_s + text(VersionModel::PlaysRole);
        default:
            return u"foot"_s;
        }
    }
    static QStringList shown(VersionsPresenter &presenter)
    {
        QStringList all;
        for (int row = 0; row < presenter.rows()->rowCount(); ++row)
            all += rowText(presenter, row);
        return all;
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(VersionsPresenterTest)
#include "versions_presenter_test.moc"
