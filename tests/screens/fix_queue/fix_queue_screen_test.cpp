#include "screens/fix_queue/fix_queue_presenter.h"

#include "support/running_program.h"
#include "support/screen_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

/// The fix queue in the window, over real libraries on disk.
class FixQueueScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_user = std::make_unique<ScreenFixture>();
    }
    void cleanup() { m_user.reset(); }

    void showsNothingWithoutALibrary()
    {
        m_user->open();
        FixQueuePresenter presenter(m_user->app());
        QVERIFY(m_user->isEmptyView(Screen::FixQueue, &presenter));
    }

    void showsAnEmptyQueue()
    {
        QVERIFY(m_user->openOn(Screen::FixQueue, u"FixQueueScreen"_s));
        QCOMPARE(m_user
                     ->textsFrom(u"Everything worth fixing, most serious first. Green ones are "
                                 "safe to automate."_s)
                     .sliced(1),
                 QStringList({u"Safe to make changes — every fix takes a snapshot first and is "
                              "reversible for 30 days."_s,
                              u"Queue's empty — nothing needs fixing."_s}));
        QVERIFY(pressByPointer(pill(u"Missing"_s)));
        QVERIFY(m_user->shows(u"Queue's empty — nothing needs fixing."_s));
    }

    void offersTheFiltersInOrder()
    {
        QVERIFY(m_user->openOn(Screen::FixQueue, u"FixQueueScreen"_s));
        QStringList buttons;
        for (QQuickItem *item : accessibleItems(m_user->content())) {
            if (accessibleRole(item) == QAccessible::Button)
                buttons += accessibleName(item);
        }
        const auto first = buttons.indexOf(u"All"_s);
        QVERIFY(first > 0);
        QCOMPARE(buttons.sliced(first), QStringList({u"All"_s, u"Missing"_s, u"Duplicates"_s,
                                                     u"Tags"_s, u"Safe to automate"_s}));
    }

    void fixesARow_data() { everyWay(); }
    void fixesARow()
    {
        QFETCH(const Way, way);
        addCopies(u"Twice"_s);
        m_user->addMissingTrack(u"gone.mp3"_s, {textRecord("tsng", u"Gone")});
        QVERIFY(m_user->openOn(Screen::FixQueue, u"FixQueueScreen"_s));
        QVERIFY(m_user->shows(u"Gone"_s));
        QVERIFY(m_user->shows(u"File not found on disk → Relink to its real location"_s));
        QVERIFY(m_user->shows(u"Your call"_s));
        QVERIFY(press(m_user->button(u"Fix it"_s), way));
        QTRY_COMPARE(m_user->app().holding().count(), 1);
        QTRY_VERIFY(!m_user->button(u"Fix it"_s));
        QVERIFY(!QFile::exists(m_user->home(u"Twice1.mp3"_s)));
        QVERIFY(!m_user->shows(u"Safe"_s));
        QVERIFY(!m_user->button(u"Fix the 1 safe ones"_s));
    }

    void sendsToWhereTheUserDecides_data() { everyWay(); }
    void sendsToWhereTheUserDecides()
    {
        QFETCH(const Way, way);
        m_user->addMissingTrack(u"gone.mp3"_s);
        QVERIFY(m_user->openOn(Screen::FixQueue, u"FixQueueScreen"_s));
        QVERIFY(press(m_user->button(u"Decide"_s), way));
        QCOMPARE(m_user->app().selection(), Screen::Missing);
    }

    void aPillFilters_data() { everyWay(); }
    void aPillFilters()
    {
        QFETCH(const Way, way);
        m_user->addMissingTrack(u"gone.mp3"_s, {textRecord("tsng", u"Gone")});
        QVERIFY(m_user->openOn(Screen::FixQueue, u"FixQueueScreen"_s));
        QQuickItem *safe = pill(u"Safe to automate"_s);
        QVERIFY(press(safe, way));
        QTRY_VERIFY(m_user->shows(u"Nothing matches this filter."_s));
        QTRY_VERIFY(!m_user->shows(u"Gone"_s));
        QVERIFY(QAccessible::queryAccessibleInterface(safe)->state().selected);
    }

    void fixesAllSafeOnesWhateverTheFilter_data() { everyWay(); }
    void fixesAllSafeOnesWhateverTheFilter()
    {
        QFETCH(const Way, way);
        addCopies(u"Twice"_s);
        addCopies(u"More"_s);
        m_user->addMissingTrack(u"gone.mp3"_s);
        QVERIFY(m_user->openOn(Screen::FixQueue, u"FixQueueScreen"_s));
        QVERIFY(pressByPointer(pill(u"Missing"_s)));
        QVERIFY(press(m_user->button(u"Fix the 2 safe ones"_s), way));
        QTRY_COMPARE(m_user->app().holding().count(), 2);
        QTRY_VERIFY(!m_user->button(u"Fix the 2 safe ones"_s));
        QVERIFY(m_user->button(u"Decide"_s));
    }

    void theButtonsStayWhereSeratoRunsAndTheCommandRefuses_data()
    {
        QTest::addColumn<QString>("button");
        QTest::newRow("one") << u"Fix it"_s;
        QTest::newRow("all") << u"Fix the 1 safe ones"_s;
    }
    void theButtonsStayWhereSeratoRunsAndTheCommandRefuses()
    {
        QFETCH(const QString, button);
        addCopies(u"Twice"_s);
        const RunningProgram serato(u"Serato DJ Pro"_s);
        QVERIFY(m_user->openOn(Screen::FixQueue, u"FixQueueScreen"_s));
        QVERIFY(m_user->shows(u"Serato is running. Changes are blocked until you close it — "
                              "reading stays available."_s));
        QVERIFY(m_user->button(button)->isEnabled());
        QVERIFY(pressByPointer(m_user->button(button)));
        QTRY_VERIFY(m_user->app().toast());
        QVERIFY2(m_user->app().toast()->message.startsWith(u"Close Serato before"),
                 qPrintable(m_user->app().toast()->message));
        QVERIFY(QFile::exists(m_user->home(u"Twice1.mp3"_s)));
        QCOMPARE(m_user->app().holding().count(), 0);
    }

    void aFilterIsForgottenWithTheScreen()
    {
        m_user->addMissingTrack(u"gone.mp3"_s, {textRecord("tsng", u"Gone")});
        QVERIFY(m_user->openOn(Screen::FixQueue, u"FixQueueScreen"_s));
        QVERIFY(isChosen(u"All"_s));
        QVERIFY(pressByPointer(pill(u"Tags"_s)));
        QTRY_VERIFY(isChosen(u"Tags"_s));
        m_user->app().setSelection(Screen::Health);
        QVERIFY(m_user->waitForView(u"HealthScreen"_s));
        m_user->app().setSelection(Screen::FixQueue);
        QVERIFY(m_user->waitForView(u"FixQueueScreen"_s));
        QTRY_VERIFY(m_user->shows(u"Gone"_s));
        QVERIFY(isChosen(u"All"_s));
    }

    void goesThroughALongQueueByKeysAndKeepsItsPlaceOverAFix()
    {
        for (int i = 0; i < 60; ++i)
            addCopies(u"Song %1"_s.arg(i, 2, 10, QChar(u'0')));
        QVERIFY(m_user->openOn(Screen::FixQueue, u"FixQueueScreen"_s));
        QVERIFY(pressByKey(pill(u"Safe to automate"_s), Qt::Key_Tab));
        QTest::keyClick(m_user->window(), Qt::Key_Tab);
        QCOMPARE(focusedTrack(), u"Song 00"_s);
        QTest::keyClick(m_user->window(), Qt::Key_End);
        QCOMPARE(focusedTrack(), u"Song 59"_s);
        QTest::keyClick(m_user->window(), Qt::Key_Up);
        QTest::keyClick(m_user->window(), Qt::Key_Return);
        QTRY_COMPARE(m_user->app().holding().count(), 1);
        QTRY_COMPARE(focusedTrack(), u"Song 59"_s);
        QVERIFY(showsFocusRing(m_user->window()->activeFocusItem()));
    }

private:
    void addCopies(const QString &title)
    {
        const QByteArrayList copy = {textRecord("tsng", title), textRecord("tgen", u"Pop")};
        m_user->addTrack(title + u"0.mp3"_s, copy, "aaaa");
        m_user->addTrack(title + u"1.mp3"_s, copy, "aa");
    }
    QQuickItem *pill(const QString &name) const { return m_user->button(name); }
    bool isChosen(const QString &name) const
    {
        return QAccessible::queryAccessibleInterface(pill(name))->state().selected;
    }
    QString focusedTrack() const
    {
        auto *seen = QAccessible::queryAccessibleInterface(m_user->window()->activeFocusItem());
        return seen ? seen->text(QAccessible::Description) : QString();
    }

    std::unique_ptr<ScreenFixture> m_user;
};

QTEST_MAIN(FixQueueScreenTest)
#include "fix_queue_screen_test.moc"
