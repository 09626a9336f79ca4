#include "support/screen_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

/// The Duplicates screen in the window, over real libraries on disk.
class DuplicatesScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_user = std::make_unique<ScreenFixture>();
    }
    void cleanup() { m_user.reset(); }

    void showsThatThereAreNoGroups()
    {
        QVERIFY(open());
        QCOMPARE(m_user
                     ->textsFrom(u"Same track, more than one copy. Keep the best, hold the rest "
                                 "for 30 days."_s)
                     .sliced(1),
                 QStringList({u"Safe to make changes — every fix takes a snapshot first and is "
                              "reversible for 30 days."_s,
                              u"0"_s, u"Groups"_s, u"0"_s, u"Redundant copies"_s, u"0 MB"_s,
                              u"Reclaimable"_s, u"No duplicate groups. Nothing to reclaim."_s}));
    }

    void showsAGroupWithItsMembers()
    {
        addCopies();
        QVERIFY(open());
        QCOMPARE(m_user->textsFrom(u"2 copies"_s),
                 QStringList({u"2 copies"_s, u"2 KB reclaimable"_s, u"Twice"_s, u"0.mp3"_s, u"0k"_s,
                              u"Keep"_s, u"Twice"_s, u"1.mp3"_s, u"0k"_s, u"→ holding"_s}));
    }

    void keepsTheChosenCopy_data() { everyWay(); }
    void keepsTheChosenCopy()
    {
        QFETCH(const Way, way);
        addCopies();
        QVERIFY(open());
        QVERIFY(press(radio(u"1.mp3"_s), way));
        QTRY_VERIFY(QAccessible::queryAccessibleInterface(radio(u"1.mp3"_s))->state().selected);
        QVERIFY(!QAccessible::queryAccessibleInterface(radio(u"0.mp3"_s))->state().selected);
        QVERIFY(press(m_user->button(u"Keep 1, hold the rest"_s), way));
        QTRY_VERIFY(m_user->shows(u"No duplicate groups. Nothing to reclaim."_s));
        QVERIFY(QFile::exists(m_user->home(u"1.mp3"_s)));
        QVERIFY(!QFile::exists(m_user->home(u"0.mp3"_s)));
    }

    void takesAGroupThatIsNoneOutOfTheList_data() { everyWay(); }
    void takesAGroupThatIsNoneOutOfTheList()
    {
        QFETCH(const Way, way);
        addCopies();
        QVERIFY(open());
        QVERIFY(press(m_user->button(u"Not a dupe"_s), way));
        QTRY_VERIFY(m_user->shows(u"No duplicate groups. Nothing to reclaim."_s));
        QCOMPARE(m_user->app().result()->total(), 2);
        QVERIFY(QFile::exists(m_user->home(u"1.mp3"_s)));
    }

private:
    bool open() { return m_user->openOn(Screen::Duplicates, u"DuplicatesScreen"_s); }
    void addCopies()
    {
        m_user->addTrack(u"0.mp3"_s, {textRecord("tsng", u"Twice")}, QByteArray(3000, 'a'));
        m_user->addTrack(u"1.mp3"_s, {textRecord("tsng", u"Twice")}, QByteArray(2000, 'a'));
    }
    QQuickItem *radio(const QString &name) const { return m_user->button(name); }

    std::unique_ptr<ScreenFixture> m_user;
};

QTEST_MAIN(DuplicatesScreenTest)
#include "duplicates_screen_test.moc"
