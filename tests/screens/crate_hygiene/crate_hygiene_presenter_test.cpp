#include "screens/crate_hygiene/crate_hygiene_presenter.h"

#include "screens/components/tint.h"
#include "support/command_fixture.h"
#include "support/crate_maker.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class CrateHygienePresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    void hasNothingBeforeTheFirstScan()
    {
        CrateHygienePresenter presenter(m_user->launch(AppState::Environment::Ignored));
        QVERIFY(!presenter.hasHygiene());
        QCOMPARE(presenter.rows()->rowCount(), 0);
        presenter.act(u"orphans"_s);
    }

    void comesOnceItIsWorkedOut()
    {
        m_user->addTrack(u"a.mp3"_s);
        CrateHygienePresenter presenter(m_user->start());
        const QSignalSpy changed(&presenter, &CrateHygienePresenter::changed);
        QVERIFY(!presenter.hasHygiene());
        QCOMPARE(presenter.rows()->rowCount(), 0);
        QVERIFY(m_user->waitUntilIdle());
        QVERIFY(presenter.hasHygiene());
        QCOMPARE(changed.size(), 1);
    }

    void saysThatAllIsTidy()
    {
        writeCrate(u"Mix"_s, {m_user->addTrack(u"a.mp3"_s)});
        CrateHygienePresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.rows());
        QVERIFY(m_user->waitUntilIdle());
        QCOMPARE(shown(presenter),
                 QStringList({u"[ # Near-duplicate crates"_s,
                              u"+ No crates overlap enough to merge. ]"_s,
                              u"[ tray/good Every track lives in a crate | Filing loose tracks "
                              "into an Unsorted crate makes them easy to find and place. ]"_s,
                              u"[ # Genre spelling variants"_s,
                              u"+ Genres are spelled consistently. ]"_s}));
        QCOMPARE(figures(presenter), u"1, 0/good, 0/good, 0/good"_s);
        for (int row = 0; row < presenter.rows()->rowCount(); ++row)
            QCOMPARE(cell(presenter, row, HygieneModel::ActsRole), false);
    }

    void listsWhatCouldBeTidied()
    {
        addAll();
        CrateHygienePresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.rows());
        QVERIFY(m_user->waitUntilIdle());
        QCOMPARE(
            shown(presenter),
            QStringList(
                {u"[ # Near-duplicate crates"_s,
                 u"100%/warn Big  ·  Small | 2 shared tracks · 4 / 2 <Merge>"_s,
                 u"-- 66%/warn Big  ·  Other | 2 shared tracks · 4 / 3 <Merge> ]"_s,
                 u"[ tray/warn 2 tracks aren't in any crate | Filing loose tracks into an "
                 "Unsorted crate makes them easy to find and place. <tray.and.arrow.down File 2> ]"_s,
                 u"[ # Genre spelling variants"_s,
                 u"House  ·  house | 3 tracks → standardise on “House” <Unify to House>"_s,
                 u"-- DUB  ·  Dub | 2 tracks → standardise on “Dub” <Unify to Dub> ]"_s}));
        QCOMPARE(figures(presenter), u"3, 2/warn, 2/warn, 2/warn"_s);
        QCOMPARE(cell(presenter, 0, HygieneModel::ActsRole), false);
        QCOMPARE(cell(presenter, 1, HygieneModel::ActsRole), true);
        QCOMPARE(cell(presenter, 3, HygieneModel::ActsRole), true);
    }

    void mergesTwoCrates()
    {
        addAll();
        CrateHygienePresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.rows());
        QVERIFY(m_user->waitUntilIdle());
        const QSignalSpy reset(presenter.rows(), &QAbstractItemModel::modelReset);
        const QString small = key(presenter, 1);
        presenter.act(small);
        QCOMPARE(m_user->toasts(), QStringList{u"Merged Small into Big [Undo]"_s});
        QVERIFY(!QFile::exists(cratePath(u"Small"_s)));
        QCOMPARE(m_user->app().heldItems().size(), 1);
        QCOMPARE(shown(presenter).sliced(0, 2),
                 QStringList({u"[ # Near-duplicate crates"_s,
                              u"66%/warn Big  ·  Other | 2 shared tracks · 4 / 3 <Merge> ]"_s}));
        QCOMPARE(figures(presenter), u"2, 1/warn, 2/warn, 2/warn"_s);
        QCOMPARE(reset.size(), 0);
        // Pressed again before it has gone from view.
        presenter.act(small);
        QCOMPARE(m_user->toasts().size(), 1);
    }

    void filesTheTracksOfNoCrate()
    {
        addAll();
        CrateHygienePresenter presenter(m_user->start());
        QVERIFY(m_user->waitUntilIdle());
        presenter.act(u"orphans"_s);
        QCOMPARE(m_user->toasts(), QStringList{u"Filed 2 orphans into Unsorted [Undo]"_s});
        const QStringList paths = m_user->paths();
        QCOMPARE(contentOf(cratePath(u"Unsorted"_s)),
                 QByteArray(crateVersion() + crateEntry(paths.at(4)) + crateEntry(paths.at(5))));
        QCOMPARE(figures(presenter), u"4, 2/warn, 0/good, 2/warn"_s);
        QVERIFY(shown(presenter).at(3).startsWith(u"[ tray/good Every track lives in a crate |"_s));
    }

    void unifiesAGenre()
    {
        addAll();
        CrateHygienePresenter presenter(m_user->start());
        QVERIFY(m_user->waitUntilIdle());
        presenter.act(key(presenter, 5));
        QCOMPARE(m_user->toasts(), QStringList{u"Unified 1 track to House [Undo]"_s});
        QVERIFY(m_user->database().contains(textRecord("tgen", u"House")));
        QVERIFY(!m_user->database().contains(textRecord("tgen", u"house")));
        QCOMPARE(shown(presenter).last(),
                 u"DUB  ·  Dub | 2 tracks → standardise on “Dub” <Unify to Dub> ]"_s);
        QCOMPARE(figures(presenter), u"3, 2/warn, 2/warn, 1/warn"_s);
    }

    void cratesOfOneNameAreListedLikeAnyOthers()
    {
        QList<LoadedCrate> crates = {crate(u"Mix"_s, {u"a"_s}), crate(u"Mix"_s, {u"a"_s}),
                                     crate(u"Mix"_s, {u"a"_s})};
        for (int i = 0; i < 3; ++i)
            crates[i].url = QUrl::fromLocalFile(u"/%1/Mix.crate"_s.arg(i));
        HygieneModel model;
        const QAbstractItemModelTester tester(&model);
        model.setHygiene(std::make_shared<CrateHygiene>(crates, std::vector<ScannedTrack>()));
        QSet<QString> keys;
        for (int row = 1; row <= 3; ++row) {
            QCOMPARE(model.index(row).data(HygieneModel::TitleRole), u"Mix  ·  Mix"_s);
            keys += model.index(row).data(HygieneModel::KeyRole).toString();
        }
        QCOMPARE(keys.size(), 3);
    }

    void actsOnNothingElse()
    {
        addAll();
        CrateHygienePresenter presenter(m_user->start());
        QVERIFY(m_user->waitUntilIdle());
        presenter.act(key(presenter, 0));
        presenter.act(key(presenter, 4));
        presenter.act(u"somewhere"_s);
        QVERIFY(m_user->toasts().isEmpty());
        QCOMPARE(m_user->snapshotCount(), 0);
    }

    void takesNoneOfALibraryThatIsNoMore()
    {
        addAll();
        CrateHygienePresenter presenter(m_user->start());
        m_user->app().dropFromLibrary(ScannedTrack(m_user->track(5)));
        QVERIFY(!presenter.hasHygiene());
        QVERIFY(m_user->waitUntilIdle());
        QCOMPARE(figures(presenter), u"3, 2/warn, 1/warn, 2/warn"_s);
    }

private:
    /// Two pairs of crates, two tracks in none, two genres in two spellings.
    void addAll()
    {
        const auto genre = [](QStringView text) {
            return QByteArrayList{textRecord("tgen", text)};
        };
        const QString a = m_user->addTrack(u"a.mp3"_s, genre(u"House"));
        const QString b = m_user->addTrack(u"b.mp3"_s, genre(u"house"));
        const QString c = m_user->addTrack(u"c.mp3"_s, genre(u"House"));
        const QString d = m_user->addTrack(u"d.mp3"_s, genre(u"Dub"));
        m_user->addTrack(u"e.mp3"_s, genre(u"DUB"));
        m_user->addTrack(u"f.mp3"_s);
        m_user->addMissingTrack(u"g.mp3"_s);
        writeCrate(u"Big"_s, {a, b, c, d});
        writeCrate(u"Other"_s, {c, d, u"elsewhere.mp3"_s});
        writeCrate(u"Small"_s, {a, b});
    }
    QString cratePath(const QString &name) const
    {
        return m_user->home(u"Music/_Serato_/Subcrates/%1.crate"_s.arg(name));
    }
    void writeCrate(const QString &name, const QStringList &entries) const
    {
        QByteArray bytes = crateVersion();
        for (const QString &entry : entries)
            bytes += crateEntry(entry);
        put(cratePath(name), bytes);
    }

    static QString tint(int value)
    {
        return value == Tint::Good ? u"/good"_s : value == Tint::Warn ? u"/warn"_s : u"/?"_s;
    }
    static QString figures(CrateHygienePresenter &presenter)
    {
        return QStringList({presenter.crates(),
                            presenter.overlaps() + tint(presenter.overlapsTint()),
                            presenter.orphans() + tint(presenter.orphansTint()),
                            presenter.variants() + tint(presenter.variantsTint())})
            .join(u", "_s);
    }
    static QVariant cell(CrateHygienePresenter &presenter, int row, int role)
    {
        return presenter.rows()->index(row).data(role);
    }
    static QString key(CrateHygienePresenter &presenter, int row)
    {
        return cell(presenter, row, HygieneModel::KeyRole).toString();
    }
    /// A row in short: brackets where its card begins and ends, "--" for a rule above it.
    static QString rowText(CrateHygienePresenter &presenter, int row)
    {
        const auto is = [&](int role) { return cell(presenter, row, role).toBool(); };
        const auto text = [&](int role, const QString &before = {}, const QString &after = {}) {
            const QString value = cell(presenter, row, role).toString();
            return value.isEmpty() ? QString() : QString(before + value + after);
        };
        const QString mark = tint(cell(presenter, row, HygieneModel::TintRole).toInt()) + u' ';
        QString action = text(HygieneModel::ActionRole);
        if (!action.isEmpty())
            action = u" <"_s + text(HygieneModel::ActionSymbolRole, {}, u" "_s) + action + u'>';
        return (is(HygieneModel::OpensRole) ? u"[ "_s : u""_s) +
               (is(HygieneModel::RuledRole) ? u"-- "_s : u""_s) +
               text(HygieneModel::HeadingRole, u"# "_s) + text(HygieneModel::PraiseRole, u"+ "_s) +
               text(HygieneModel::LeadRole, {}, mark) + text(HygieneModel::SymbolRole, {}, mark) +
               text(HygieneModel::TitleRole) + text(HygieneModel::DetailRole, u" | "_s) + action +
               (is(HygieneModel::ClosesRole) ? u" ]"_s : u""_s);
    }
    static QStringList shown(CrateHygienePresenter &presenter)
    {
        QStringList all;
        for (int row = 0; row < presenter.rows()->rowCount(); ++row)
            all += rowText(presenter, row);
        return all;
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(CrateHygienePresenterTest)
#include "crate_hygiene_presenter_test.moc"
