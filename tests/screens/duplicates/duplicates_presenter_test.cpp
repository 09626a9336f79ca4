#include "screens/duplicates/duplicates_presenter.h"

#include "support/command_fixture.h"

#include <QAbstractItemModelTester>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class DuplicatesPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_user = std::make_unique<CommandFixture>(); }
    void cleanup() { m_user.reset(); }

    void hasNoRowsWhereThereAreNoCopies()
    {
        m_user->addTrack(u"a.mp3"_s, {textRecord("tsng", u"Alone")});
        DuplicatesPresenter presenter(m_user->start());
        QVERIFY(!presenter.hasGroups());
        QCOMPARE(presenter.groups(), u"0"_s);
        QCOMPARE(presenter.redundant(), u"0"_s);
        QCOMPARE(presenter.reclaimable(), u"0 MB"_s);
        presenter.keep(u"x"_s, 0);
        presenter.resolve(u"x"_s);
        presenter.markNotDuplicate(u"x"_s);
        QVERIFY(m_user->toasts().isEmpty());
    }

    void givesEachGroupAHeadItsMembersAndAFoot()
    {
        addCopies(u"Twice"_s, {3000, 2000});
        addCopies(u"Thrice"_s, {10000, 9000, 8000});
        DuplicatesPresenter presenter(m_user->start());
        const QAbstractItemModelTester tester(presenter.rows());
        QCOMPARE(shown(presenter),
                 QStringList({u"3 copies · 17 KB reclaimable"_s, u"(•) Thrice0.mp3"_s,
                              u"( ) Thrice1.mp3"_s, u"( ) Thrice2.mp3"_s, u"foot of Thrice"_s,
                              u"2 copies · 2 KB reclaimable"_s, u"(•) Twice0.mp3"_s,
                              u"( ) Twice1.mp3"_s, u"foot of Twice"_s}));
        QCOMPARE(presenter.groups(), u"2"_s);
        QCOMPARE(presenter.redundant(), u"3"_s);
        QCOMPARE(presenter.reclaimable(), u"19 KB"_s);
        QCOMPARE(cell(presenter, 0, DuplicateModel::ActsRole), false);
        QCOMPARE(cell(presenter, 1, DuplicateModel::ActsRole), true);
        QCOMPARE(cell(presenter, 1, DuplicateModel::TagsRole), QStringList{u"0k"_s});
    }

    void keepsTheChosenCopy()
    {
        addCopies(u"Twice"_s, {3000, 2000});
        DuplicatesPresenter presenter(m_user->start());
        const QString group = cell(presenter, 0, DuplicateModel::GroupRole).toString();
        presenter.keep(group, 1);
        presenter.keep(group, 2);
        QCOMPARE(shown(presenter).sliced(1, 2),
                 QStringList({u"( ) Twice0.mp3"_s, u"(•) Twice1.mp3"_s}));
        presenter.resolve(group);
        QVERIFY(!presenter.hasGroups());
        QCOMPARE(m_user->paths(), QStringList{m_user->home(u"Twice1.mp3"_s).sliced(1)});
        QVERIFY(!QFile::exists(m_user->home(u"Twice0.mp3"_s)));
        QCOMPARE(m_user->app().holding().count(), 1);
    }

    void keepsTheBestCopyWhereNoneIsChosen()
    {
        addCopies(u"Twice"_s, {2000, 3000});
        DuplicatesPresenter presenter(m_user->start());
        presenter.resolve(cell(presenter, 0, DuplicateModel::GroupRole).toString());
        QCOMPARE(m_user->paths(), QStringList{m_user->home(u"Twice1.mp3"_s).sliced(1)});
    }

    void leavesOutAGroupThatIsNone()
    {
        addCopies(u"Twice"_s, {2000, 3000});
        addCopies(u"More"_s, {200, 300});
        DuplicatesPresenter presenter(m_user->start());
        const QSignalSpy reset(presenter.rows(), &QAbstractItemModel::modelReset);
        presenter.markNotDuplicate(cell(presenter, 0, DuplicateModel::GroupRole).toString());
        QCOMPARE(presenter.rows()->rowCount(), 4);
        QCOMPARE(reset.size(), 0);
        QCOMPARE(m_user->app().result()->total(), 4);
    }

private:
    void addCopies(const QString &title, const QList<int> &sizes)
    {
        for (qsizetype i = 0; i < sizes.size(); ++i)
            m_user->addTrack(title + QString::number(i) + u".mp3"_s, {textRecord("tsng", title)},
                             QByteArray(sizes.at(i), 'a'));
    }
    static QVariant cell(DuplicatesPresenter &presenter, int row, int role)
    {
        return presenter.rows()->index(row).data(role);
    }
    static QString rowText(DuplicatesPresenter &presenter, int row)
    {
        const auto text = [&](int role) { return cell(presenter, row, role).toString(); };
        switch (cell(presenter, row, DuplicateModel::KindRole).toInt()) {
        case DuplicateModel::Head:
            return text(DuplicateModel::CopiesRole) + u" · "_s +
                   text(DuplicateModel::ReclaimableRole);
        case DuplicateModel::Member:
            return (cell(presenter, row, DuplicateModel::KeptRole).toBool() ? u"(•) "_s
                                                                            : u"( ) "_s) +
                   text(DuplicateModel::SecondRole);
        default:
            return u"foot of "_s + text(DuplicateModel::FirstRole);
        }
    }
    static QStringList shown(DuplicatesPresenter &presenter)
    {
        QStringList all;
        for (int row = 0; row < presenter.rows()->rowCount(); ++row)
            all += rowText(presenter, row);
        return all;
    }

    std::unique_ptr<CommandFixture> m_user;
};

QTEST_GUILESS_MAIN(DuplicatesPresenterTest)
#include "duplicates_presenter_test.moc"
