// Each control of the Signal screen, pressed in every way; what it does is looked up at a server
// with a real pool, on disk or on the screen.

#include "support/signal_screen_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;

class SignalControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_server = std::make_unique<SignalServer>(onThatFriday);
        m_user = std::make_unique<SignalScreenFixture>();
        const QString a = m_user->addOwned(u"A"_s, u"House"_s);
        m_user->addOwned(u"B"_s, u"Drum & Bass"_s);
        m_user->root().write(u"home/Music/_Serato_/History/Sessions/1.session"_s,
                             playEntry(QString(u'/' + a), u"A", u"Artist", seconds(friday)));
    }
    void cleanup()
    {
        m_user.reset();
        m_server.reset();
    }

    void connects_data() { everyWay(); }
    void connects();
    void connectsByReturnInTheField();
    void staysWithTheFieldWhereItIsEmpty();
    void turnsSharingOnAndOff_data();
    void turnsSharingOnAndOff();
    void contributes_data() { everyWay(); }
    void contributes();
    void opensTheSettings_data() { everyWay(); }
    void opensTheSettings();
    void settingsCloseAtEscapeAndAtAPressElsewhere();
    void settingsSayWhatTheyAre();
    void savesTheKeyAndHidesIt();
    void savesTheCity();
    void movesToAnotherServer();
    void leaves_data() { everyWay(); }
    void leaves();
    void choosesAWindow_data() { everyWay(); }
    void choosesAWindow();
    void choosesALane_data() { everyWay(); }
    void choosesALane();
    void laneMenuGoesByKeys();
    void showsOnlyWhatIsOwned_data() { everyWay(); }
    void showsOnlyWhatIsOwned();
    void tabGoesThroughEverything();

private:
    bool openConnected(bool sharing = false)
    {
        m_user->saveSettings(m_server->url(), sharing);
        return m_user->openAndFetch();
    }
    QQuickItem *lane(const QString &name) const { return m_user->button(name); }
    QQuickItem *choice(const QString &name) const { return m_user->choice(name); }
    QString focused() const
    {
        QQuickItem *item = m_user->window()->activeFocusItem();
        const QString label = item->property("label").toString();
        return label.isEmpty() ? accessibleName(item) : label;
    }

    std::unique_ptr<SignalServer> m_server;
    std::unique_ptr<SignalScreenFixture> m_user;
};

void SignalControlsTest::connects()
{
    QFETCH(const Way, way);
    m_user->feed(m_server->url(), 2, {u"A"_s}, u"House"_s);
    QVERIFY(m_user->open());
    QVERIFY(m_user->type(u"Signal server"_s, m_server->url()));
    // The field is still there after each letter, and nothing is on disk yet.
    QCOMPARE(m_user->app().signal().serverUrl, m_server->url());
    QCOMPARE(m_user->savedSettings().serverUrl, QString());
    QVERIFY(press(m_user->button(u"Connect"_s), way));
    QTRY_VERIFY(m_user->shows(u"Artist — A"_s));
    QCOMPARE(m_user->savedSettings().serverUrl, m_server->url());
    QVERIFY(!m_user->field(u"Signal server"_s));
}

void SignalControlsTest::connectsByReturnInTheField()
{
    QVERIFY(m_user->open());
    QVERIFY(m_user->type(u"Signal server"_s, m_server->url()));
    QTest::keyClick(m_user->window(), Qt::Key_Return);
    QTRY_VERIFY(m_user->shows(u"0 DJs · 0 tracks in the pool"_s));
}

void SignalControlsTest::staysWithTheFieldWhereItIsEmpty()
{
    QVERIFY(m_user->open());
    QVERIFY(pressByPointer(m_user->button(u"Connect"_s)));
    QVERIFY(m_user->waitUntilIdle());
    QVERIFY(m_user->field(u"Signal server"_s)->hasActiveFocus());
    QVERIFY(m_user->shows(u"Connect to your crew's Signal"_s));
}

void SignalControlsTest::turnsSharingOnAndOff_data()
{
    everyWay();
}

void SignalControlsTest::turnsSharingOnAndOff()
{
    QFETCH(const Way, way);
    QVERIFY(openConnected());
    QCOMPARE(QAccessible::queryAccessibleInterface(m_user->shareSwitch())->state().checked, 0u);
    QVERIFY(press(m_user->shareSwitch(), way));
    QTRY_VERIFY(m_user->shows(u"Sharing your plays"_s));
    QVERIFY(m_user->button(u"Contribute my plays"_s));
    QVERIFY(m_user->savedSettings().optIn);
    QCOMPARE(QAccessible::queryAccessibleInterface(m_user->shareSwitch())->state().checked, 1u);
    QVERIFY(press(m_user->shareSwitch(), way));
    QTRY_VERIFY(m_user->shows(u"Reading only — not sharing"_s));
    QVERIFY(!m_user->savedSettings().optIn);
    // Nothing went out.
    QCOMPARE(SignalFixture::rowsOf(m_server->url()), QStringList());
}

void SignalControlsTest::contributes()
{
    QFETCH(const Way, way);
    QVERIFY(openConnected(true));
    QVERIFY(press(m_user->button(u"Contribute my plays"_s), way));
    QTRY_VERIFY(m_user->shows(u"You feed 1 · you read the full feed"_s));
    QCOMPARE(SignalFixture::rowsOf(m_server->url(), u"House"_s), QStringList{u"A 1"_s});
}

void SignalControlsTest::opensTheSettings()
{
    QFETCH(const Way, way);
    QVERIFY(openConnected());
    QVERIFY(press(m_user->button(u"127.0.0.1"_s), way));
    QVERIFY(m_user->waitForSetup());
    QTest::keyClick(m_user->window(), Qt::Key_Escape);
    QTRY_VERIFY(!m_user->isSetupOpen());
    QTRY_COMPARE(focused(), u"127.0.0.1"_s);
    QVERIFY(press(m_user->button(u"127.0.0.1"_s), way));
    QVERIFY(m_user->waitForSetup());
}

void SignalControlsTest::settingsCloseAtEscapeAndAtAPressElsewhere()
{
    QVERIFY(openConnected());
    QVERIFY(m_user->openSetup());
    QTest::mouseClick(m_user->window(), Qt::LeftButton, {}, QPoint(300, 600));
    QTRY_VERIFY(!m_user->isSetupOpen());
    QVERIFY(m_user->openSetup());
    // A second press of the chip closes them too.
    QVERIFY(pressByPointer(m_user->button(u"127.0.0.1"_s)));
    QTRY_VERIFY(!m_user->isSetupOpen());
}

void SignalControlsTest::settingsSayWhatTheyAre()
{
    QVERIFY(openConnected());
    const qsizetype before = m_user->below().size();
    QVERIFY(m_user->openSetup());
    QStringList all = m_user->texts();
    all.removeIf([](const QString &text) { return text.isEmpty(); });
    QCOMPARE(all.last(4),
             QStringList({u"Signal server"_s, u"Access key"_s, u"City"_s,
                          u"Your DJ id is a random code stored only on this Mac — never your "
                          "name."_s}));
    QVERIFY(before > 0);
    QCOMPARE(m_user->field(u"Signal server"_s)->property("text").toString(), m_server->url());
    QCOMPARE(m_user->field(u"Access key"_s)->property("example").toString(), u"from your crew"_s);
    QCOMPARE(m_user->field(u"City"_s)->property("example").toString(), u"optional, e.g. Detroit"_s);
    QVERIFY(m_user->button(u"Leave & erase my plays"_s));
    QVERIFY(m_user->button(u"Connect"_s));
}

void SignalControlsTest::savesTheKeyAndHidesIt()
{
    QVERIFY(openConnected());
    QVERIFY(m_user->openSetup());
    QVERIFY(m_user->type(u"Access key"_s, u"sesame"_s));
    QCOMPARE(m_user->savedSettings().apiKey, u"sesame"_s);
    QQuickItem *field = m_user->field(u"Access key"_s);
    QCOMPARE(field->property("value").toString(), u"sesame"_s);
    QCOMPARE(field->property("displayText").toString().size(), 6);
    QVERIFY(!field->property("displayText").toString().contains(u's'));
    auto *interface = QAccessible::queryAccessibleInterface(field);
    QVERIFY(interface->state().passwordEdit);
    QVERIFY(!m_user->field(u"City"_s)->property("displayText").toString().contains(u"sesame"_s));
}

void SignalControlsTest::savesTheCity()
{
    QVERIFY(openConnected(true));
    QVERIFY(m_user->openSetup());
    QVERIFY(m_user->type(u"City"_s, u"Leeds"_s));
    QCOMPARE(m_user->savedSettings().city, u"Leeds"_s);
    QTest::keyClick(m_user->window(), Qt::Key_Escape);
    QTRY_VERIFY(!m_user->isSetupOpen());
    QVERIFY(pressByPointer(m_user->button(u"Contribute my plays"_s)));
    QVERIFY(m_user->waitUntilIdle());
    const auto rows = whileServing([&] {
        return SignalClient::landing({.serverUrl = m_server->url()}, 30, std::nullopt, u"Leeds"_s);
    });
    QCOMPARE(rows->size(), 1);
}

void SignalControlsTest::movesToAnotherServer()
{
    const SignalServer other(onThatFriday);
    m_user->feed(other.url(), 2, {u"elsewhere"_s}, u"House"_s);
    QVERIFY(openConnected());
    QVERIFY(m_user->openSetup());
    QVERIFY(m_user->type(u"Signal server"_s, other.url()));
    QVERIFY(m_user->isSetupOpen());
    QCOMPARE(m_user->savedSettings().serverUrl, m_server->url());
    QVERIFY(pressByPointer(m_user->button(u"Connect"_s)));
    QTRY_VERIFY(m_user->shows(u"Artist — elsewhere"_s));
    QCOMPARE(m_user->savedSettings().serverUrl, other.url());
    // Without one it is asked for again, as soon as the settings have gone.
    QVERIFY(m_user->type(u"Signal server"_s, {}));
    QVERIFY(m_user->isSetupOpen());
    QTest::keyClick(m_user->window(), Qt::Key_Escape);
    QTRY_VERIFY(m_user->shows(u"Connect to your crew's Signal"_s));
    QTRY_VERIFY(!m_user->isSetupOpen());
}

void SignalControlsTest::leaves()
{
    QFETCH(const Way, way);
    QVERIFY(openConnected(true));
    QVERIFY(pressByPointer(m_user->button(u"Contribute my plays"_s)));
    QTRY_COMPARE(m_user->app().youFeed(), 1);
    QCOMPARE(SignalFixture::rowsOf(m_server->url()), QStringList{u"A 1"_s});
    QVERIFY(m_user->openSetup());
    QVERIFY(press(m_user->button(u"Leave & erase my plays"_s), way));
    QTRY_VERIFY(m_user->shows(u"Reading only — not sharing"_s));
    QCOMPARE(SignalFixture::rowsOf(m_server->url()), QStringList());
    QVERIFY(!m_user->savedSettings().optIn);
    QCOMPARE(m_user->savedSettings().serverUrl, m_server->url());
    QVERIFY(!m_user->button(u"Contribute my plays"_s));
}

void SignalControlsTest::choosesAWindow()
{
    QFETCH(const Way, way);
    QVERIFY(openConnected());
    const auto isActive = [this](const QString &name) {
        return m_user->button(name)->property("active").toBool();
    };
    QVERIFY(isActive(u"30d"_s));
    m_user->feed(m_server->url(), 2, {u"A"_s}, u"House"_s);
    QVERIFY(!m_user->shows(u"Artist — A"_s));
    QVERIFY(press(m_user->button(u"90d"_s), way));
    QTRY_VERIFY(m_user->shows(u"Artist — A"_s));
    QVERIFY(isActive(u"90d"_s) && !isActive(u"30d"_s) && !isActive(u"7d"_s));
    QVERIFY(press(m_user->button(u"7d"_s), way));
    QVERIFY(m_user->waitUntilIdle());
    QVERIFY(isActive(u"7d"_s) && !isActive(u"90d"_s));
}

void SignalControlsTest::choosesALane()
{
    QFETCH(const Way, way);
    m_user->feed(m_server->url(), 2, {u"A"_s}, u"House"_s);
    m_user->feed(m_server->url(), 2, {u"B"_s}, u"Drum & Bass"_s);
    QVERIFY(openConnected());
    QVERIFY(m_user->shows(u"Artist — A"_s));
    QVERIFY(press(lane(u"All lanes"_s), way));
    QTRY_VERIFY(choice(u"Drum & Bass"_s));
    QVERIFY(choice(u"All"_s) && choice(u"House"_s));
    QVERIFY(m_user->waitForPicture());
    if (way == Way::Space || way == Way::Return) {
        QTRY_COMPARE(focused(), u"All"_s);
        QTest::keyClick(m_user->window(), Qt::Key_Down);
        QTest::keyClick(m_user->window(), way == Way::Space ? Qt::Key_Space : Qt::Key_Return);
    } else {
        QVERIFY(press(choice(u"Drum & Bass"_s), way));
    }
    QTRY_VERIFY(lane(u"Drum & Bass"_s));
    QTRY_VERIFY(!m_user->shows(u"Artist — A"_s));
    QVERIFY(m_user->shows(u"Artist — B"_s));
    QTRY_VERIFY(!choice(u"House"_s));
    QTRY_COMPARE(focused(), u"Drum & Bass"_s);
}

void SignalControlsTest::laneMenuGoesByKeys()
{
    for (int i = 0; i < 40; ++i)
        m_user->addOwned(u"T%1"_s.arg(i), u"Genre %1"_s.arg(i, 2, 10, QChar(u'0')));
    QVERIFY(openConnected());
    QVERIFY(pressByKey(lane(u"All lanes"_s), Qt::Key_Space));
    QTRY_COMPARE(focused(), u"All"_s);
    const auto at = [this](Qt::Key key) {
        QTest::keyClick(m_user->window(), key);
        return focused();
    };
    QCOMPARE(at(Qt::Key_Down), u"Drum & Bass"_s);
    QCOMPARE(at(Qt::Key_Up), u"All"_s);
    QCOMPARE(at(Qt::Key_PageDown), u"Genre 07"_s);
    QCOMPARE(at(Qt::Key_PageUp), u"All"_s);
    QCOMPARE(at(Qt::Key_PageUp), u"All"_s);
    QCOMPARE(at(Qt::Key_End), u"House"_s);
    QCOMPARE(at(Qt::Key_Home), u"All"_s);
    QCOMPARE(at(Qt::Key_Tab), u"All"_s);
    QTest::keyClick(m_user->window(), Qt::Key_Escape);
    QTRY_COMPARE(focused(), u"All lanes"_s);
    QVERIFY(showsFocusRing(lane(u"All lanes"_s)));
    QVERIFY(m_user->waitUntilIdle());
}

void SignalControlsTest::showsOnlyWhatIsOwned()
{
    QFETCH(const Way, way);
    m_user->feed(m_server->url(), 3, {u"strange"_s}, u"House"_s);
    m_user->feed(m_server->url(), 2, {u"A"_s}, u"House"_s);
    QVERIFY(openConnected());
    QVERIFY(m_user->shows(u"2"_s));
    QVERIFY(press(m_user->button(u"Only on my drive"_s), way));
    QTRY_VERIFY(!m_user->shows(u"Artist — strange"_s));
    QVERIFY(m_user->shows(u"Artist — A"_s));
    QVERIFY(m_user->below().contains(u"1"_s) && !m_user->below().contains(u"2"_s));
    QCOMPARE(m_user->app().pendingTasks(), 0);
    QVERIFY(press(m_user->button(u"Only on my drive"_s), way));
    QTRY_VERIFY(m_user->shows(u"Artist — strange"_s));
}

void SignalControlsTest::tabGoesThroughEverything()
{
    QVERIFY(openConnected(true));
    QVERIFY(pressByKey(m_user->button(u"Rescan"_s), Qt::Key_Tab));
    QStringList reached = {focused()};
    for (int i = 0; i < 7; ++i) {
        QTest::keyClick(m_user->window(), Qt::Key_Tab);
        reached += focused();
    }
    QCOMPARE(reached,
             QStringList({u"Share your plays"_s, u"Contribute my plays"_s, u"127.0.0.1"_s, u"7d"_s,
                          u"30d"_s, u"90d"_s, u"All lanes"_s, u"Only on my drive"_s}));
    // The settings keep the keyboard to themselves.
    QVERIFY(pressByKey(m_user->button(u"127.0.0.1"_s), Qt::Key_Space));
    QVERIFY(m_user->waitForSetup());
    reached.clear();
    for (int i = 0; i < 6; ++i) {
        QTest::keyClick(m_user->window(), Qt::Key_Tab);
        reached += focused();
    }
    QCOMPARE(reached, QStringList({u"Signal server"_s, u"Connect"_s, u"Access key"_s, u"City"_s,
                                   u"Leave & erase my plays"_s, u"Signal server"_s}));
}

QTEST_MAIN(SignalControlsTest)
#include "signal_controls_test.moc"
