// The screen of Signal in the window, in each of its states, over real libraries and real servers.
// What its controls do: signal_controls_test.

#include "platform/http.h"
#include "support/signal_screen_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

const QString readingOnly = u"Reading only — not sharing"_s;
const QString readingLine =
    u"You read public counts only. Turn on to contribute and see everything."_s;
const QString sharing = u"Sharing your plays"_s;
const QString emptyTitle = u"Nothing's crossed the 5-DJ line yet."_s;
const QString emptyText =
    u"As your crew shares plays, the tracks the most DJs are spinning surface here. Be the first — "
    "turn on sharing and contribute your plays."_s;
const QString owned = u"Owned — not played"_s;

/// The screen of an item's kind that is visible; null for none.
QQuickItem *visiblePart(QQuickItem *root, const char *type)
{
    for (QQuickItem *child : root->childItems()) {
        if (!child->isVisible())
            continue;
        if (QByteArray(child->metaObject()->className()).startsWith(type))
            return child;
        if (QQuickItem *found = visiblePart(child, type))
            return found;
    }
    return nullptr;
}

} // namespace

class SignalScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_user = std::make_unique<SignalScreenFixture>();
        m_user->addOwned(u"A"_s, u"House"_s);
    }
    void cleanup() { m_user.reset(); }

    void asksForAServerAloneUntilThereIsOne();
    void waitsForTheFirstChart();
    void showsTheChart();
    void saysThatNothingHasCrossedTheLine();
    void showsNothingBelowTheServersLine();
    void saysThatTheKeyIsWrong();
    void keepsTheOldChartUnderAnErrorWhenTheServerHasGone();
    void tellsWhatTheUserFeeds();
    void isBackToReadingOnceTheUserHasLeft();
    void staysInThePoolWhereTheServerDoesNotHear();
    void fillsAScreenThatScrolls();
    void cutsWhatIsTooLong();
    void wearsItsColours();
    void sidebarLeadsHere();
    void aReplyMayComeAfterTheWindowHasClosed();

private:
    /// A text of the screen, whatever the sidebar shows.
    QQuickItem *here(const QString &words) const
    {
        return itemNamed(visiblePart(m_user->content(), "SignalScreen"), words,
                         QAccessible::StaticText);
    }
    /// The visible icons of the screen, each with its colour.
    QStringList icons() const
    {
        QStringList found;
        collectIcons(visiblePart(m_user->content(), "SignalScreen"), found);
        return found;
    }
    static void collectIcons(QQuickItem *root, QStringList &found)
    {
        for (QQuickItem *child : root->childItems()) {
            if (!child->isVisible())
                continue;
            const QString symbol = child->property("symbol").toString();
            if (!symbol.isEmpty() && child->property("density").isValid())
                found +=
                    symbol + u' ' + child->property("color").value<QColor>().name(QColor::HexArgb);
            else
                collectIcons(child, found);
        }
    }

    std::unique_ptr<SignalScreenFixture> m_user;
};

void SignalScreenTest::asksForAServerAloneUntilThereIsOne()
{
    QVERIFY(m_user->open());
    QCOMPARE(m_user->textsFrom(u"What's landing"_s),
             QStringList(
                 {u"What's landing"_s,
                  u"New music ranked by how many DJs are actually playing it — never by sales. "
                  "5-DJ minimum before anything shows."_s,
                  u"Connect to your crew's Signal"_s,
                  u"Point Tarnwick at the Signal server your community runs. Nothing is shared "
                  "until you turn sharing on — and even then it's just anonymised play counts (no "
                  "names, venues, or times finer than a week)."_s}));
    QVERIFY(m_user->button(u"Connect"_s));
    QVERIFY(m_user->field(u"Signal server"_s));
    QCOMPARE(m_user->field(u"Signal server"_s)->property("example").toString(),
             u"https://signal.example.org"_s);
    QVERIFY(!m_user->button(u"30d"_s));
    QVERIFY(!m_user->button(u"server"_s));
    QVERIFY(!m_user->shareSwitch());
    QVERIFY(!visiblePart(m_user->content(), "Spinner"));
}

void SignalScreenTest::waitsForTheFirstChart()
{
    const platform::ScopedHttpPatience little(std::chrono::milliseconds(1500));
    ScriptedServer server;
    server.keepSilent();
    m_user->saveSettings(server.url(), true);
    QVERIFY(m_user->open());
    QCOMPARE(m_user->below(), QStringList({sharing, u"You feed 0 · you read the full feed"_s}));
    QVERIFY(visiblePart(m_user->content(), "Spinner"));
    QVERIFY(!m_user->button(u"Sharing…"_s)->isEnabled());
    QVERIFY(m_user->waitUntilIdle());
    QTRY_VERIFY(!visiblePart(m_user->content(), "Spinner"));
    QVERIFY(m_user->button(u"Contribute my plays"_s)->isEnabled());
    QVERIFY(m_user->shows(emptyTitle));
}

void SignalScreenTest::showsTheChart()
{
    m_user->addOwned(u"B"_s, u"House"_s);
    m_user->root().write(u"home/Music/_Serato_/History/Sessions/1.session"_s,
                         playEntry(u"/B.mp3", u"B", u"Artist", seconds(friday)));
    const SignalServer server(onThatFriday + QStringList{u"--min-djs"_s, u"5"_s});
    m_user->feed(server.url(), 9, {u"B"_s, u"C"_s}, u"House"_s);
    m_user->feed(server.url(), 5, {u"A"_s}, u"House"_s);
    m_user->feed(server.url(), 4, {u"below"_s}, u"House"_s);
    m_user->saveSettings(server.url());
    QVERIFY(m_user->openAndFetch());
    QStringList rows;
    const QString b = u"Artist — B"_s;
    const QString c = u"Artist — C"_s;
    const QStringList firstTwo =
        keyOf(u"B"_s) < keyOf(u"C"_s) ? QStringList{b, c} : QStringList{c, b};
    rows << u"1"_s << firstTwo[0] << u"House"_s << u"9 DJs"_s << u"9 plays"_s;
    rows << u"2"_s << firstTwo[1] << u"House"_s << u"9 DJs"_s << u"9 plays"_s;
    rows << u"3"_s << u"Artist — A"_s << u"House"_s << owned << u"5 DJs"_s << u"5 plays"_s;
    QCOMPARE(m_user->below(),
             QStringList({readingOnly, readingLine, u"9 DJs · 4 tracks in the pool"_s}) + rows);
    QVERIFY(!m_user->button(u"Contribute my plays"_s));
    QVERIFY(m_user->button(u"127.0.0.1"_s));
}

void SignalScreenTest::saysThatNothingHasCrossedTheLine()
{
    const SignalServer server(onThatFriday);
    m_user->feed(server.url(), 5, {u"A"_s}, u"Techno"_s);
    m_user->saveSettings(server.url());
    QVERIFY(m_user->openAndFetch());
    QVERIFY(!m_user->shows(emptyTitle));
    QVERIFY(pressByPointer(m_user->button(u"All lanes"_s)));
    QTRY_VERIFY(m_user->choice(u"House"_s));
    QVERIFY(m_user->waitForPicture());
    QVERIFY(pressByPointer(m_user->choice(u"House"_s)));
    QTRY_COMPARE(m_user->below(),
                 QStringList({readingOnly, readingLine, u"5 DJs · 1 tracks in the pool"_s,
                              emptyTitle, emptyText}));
}

void SignalScreenTest::showsNothingBelowTheServersLine()
{
    const SignalServer server(onThatFriday + QStringList{u"--min-djs"_s, u"5"_s});
    m_user->feed(server.url(), 4, {u"A"_s}, u"House"_s);
    m_user->saveSettings(server.url());
    QVERIFY(m_user->openAndFetch());
    QCOMPARE(m_user->below(),
             QStringList({readingOnly, readingLine, u"4 DJs · 1 tracks in the pool"_s, emptyTitle,
                          emptyText}));
}

void SignalScreenTest::saysThatTheKeyIsWrong()
{
    const SignalServer server(onThatFriday + QStringList{u"--key"_s, u"sesame"_s});
    m_user->feed(server.url(), 5, {u"A"_s}, u"House"_s, u"sesame"_s);
    m_user->saveSettings(server.url(), false, u"wrong"_s);
    QVERIFY(m_user->openAndFetch());
    QCOMPARE(m_user->below(),
             QStringList({readingOnly, readingLine,
                          u"Access key required or incorrect — check the key your crew gave you."_s,
                          emptyTitle, emptyText}));
    QVERIFY(m_user->openSetup());
    QVERIFY(m_user->type(u"Access key"_s, u"sesame"_s));
    QVERIFY(pressByPointer(m_user->button(u"Connect"_s)));
    QTRY_VERIFY(m_user->shows(u"Artist — A"_s));
    QVERIFY(!m_user->shows(emptyTitle));
}

void SignalScreenTest::keepsTheOldChartUnderAnErrorWhenTheServerHasGone()
{
    auto server = std::make_unique<SignalServer>(onThatFriday);
    m_user->feed(server->url(), 5, {u"A"_s}, u"House"_s);
    m_user->saveSettings(server->url());
    QVERIFY(m_user->openAndFetch());
    const QStringList before = m_user->below();
    QVERIFY(before.contains(u"Artist — A"_s));
    server.reset();
    QVERIFY(pressByPointer(m_user->button(u"7d"_s)));
    QTRY_VERIFY(m_user->shows(u"Couldn't reach the server: Connection refused"_s));
    QStringList expected = before;
    expected.insert(expected.indexOf(u"1"_s), u"Couldn't reach the server: Connection refused"_s);
    QCOMPARE(m_user->below(), expected);
}

void SignalScreenTest::tellsWhatTheUserFeeds()
{
    m_user->root().write(u"home/Music/_Serato_/History/Sessions/1.session"_s,
                         playEntry(u"/A.mp3", u"A", u"Artist", seconds(friday)));
    const SignalServer server(onThatFriday);
    m_user->saveSettings(server.url(), true);
    QVERIFY(m_user->openAndFetch());
    QCOMPARE(m_user->below().first(2),
             QStringList({sharing, u"You feed 0 · you read the full feed"_s}));
    QVERIFY(pressByPointer(m_user->button(u"Contribute my plays"_s)));
    QTRY_VERIFY(m_user->shows(u"You feed 1 · you read the full feed"_s));
    QTRY_VERIFY(m_user->shows(u"Shared 1 plays — you feed 1 to the pool"_s));
}

void SignalScreenTest::isBackToReadingOnceTheUserHasLeft()
{
    const SignalServer server(onThatFriday);
    m_user->saveSettings(server.url(), true);
    QVERIFY(m_user->openAndFetch());
    QVERIFY(m_user->openSetup());
    QVERIFY(pressByPointer(m_user->button(u"Leave & erase my plays"_s)));
    QTRY_VERIFY(m_user->shows(readingOnly));
    QVERIFY(!m_user->app().signal().optIn);
    QVERIFY(!m_user->button(u"Contribute my plays"_s));
    QTRY_VERIFY(m_user->shows(u"Left the pool — 0 of your plays erased"_s));
}

void SignalScreenTest::staysInThePoolWhereTheServerDoesNotHear()
{
    const SignalServer server(onThatFriday + QStringList{u"--key"_s, u"sesame"_s});
    m_user->saveSettings(server.url(), true);
    QVERIFY(m_user->openAndFetch());
    QVERIFY(m_user->openSetup());
    QVERIFY(pressByPointer(m_user->button(u"Leave & erase my plays"_s)));
    QTRY_VERIFY(m_user->app().toast());
    QCOMPARE(m_user->app().toast()->message,
             u"Access key required or incorrect — check the key your crew gave you."_s);
    QVERIFY(m_user->shows(sharing));
    QVERIFY(m_user->savedSettings().optIn);
}

void SignalScreenTest::fillsAScreenThatScrolls()
{
    const SignalServer server(onThatFriday);
    QStringList titles;
    for (int i = 0; i < 200; ++i)
        titles += u"T%1"_s.arg(i);
    m_user->feed(server.url(), 2, titles, u"House"_s);
    m_user->saveSettings(server.url());
    QVERIFY(m_user->openAndFetch());
    QCOMPARE(m_user->app().landing().size(), 200);
    // Rows are made as they come into view.
    QVERIFY(m_user->texts().size() < 200);
    QVERIFY(!m_user->shows(u"200"_s));
    QVERIFY(pressByKey(m_user->button(u"Only on my drive"_s), Qt::Key_End));
    QTRY_VERIFY(m_user->shows(u"200"_s));
}

void SignalScreenTest::cutsWhatIsTooLong()
{
    const QString longWord = QString(300, u'x');
    m_user->addOwned(u"B"_s, longWord);
    const SignalServer server(onThatFriday);
    m_user->feed(server.url(), 5, {u"A"_s + longWord}, longWord);
    m_user->saveSettings(server.url());
    QVERIFY(m_user->openAndFetch());
    QVERIFY(pressByPointer(m_user->button(u"All lanes"_s)));
    QTRY_VERIFY(m_user->choice(longWord));
    QVERIFY(m_user->waitForPicture());
    QVERIFY(pressByPointer(m_user->choice(longWord)));
    QTRY_VERIFY(m_user->choice(longWord));
    QVERIFY(m_user->waitUntilIdle());
    QVERIFY(m_user->waitForPicture());
    for (const QString &name : {u"5 DJs"_s, u"5 plays"_s, u"1"_s}) {
        QQuickItem *text = m_user->text(name);
        QVERIFY2(text, qPrintable(name));
        QVERIFY(text->mapRectToScene(text->boundingRect()).right() < m_user->window()->width());
    }
    QQuickItem *mine = m_user->button(u"Only on my drive"_s);
    QVERIFY(mine->mapRectToScene(mine->boundingRect()).right() < m_user->window()->width());
}

void SignalScreenTest::wearsItsColours()
{
    auto server = std::make_unique<SignalServer>(onThatFriday);
    m_user->feed(server->url(), 5, {u"A"_s}, u"House"_s);
    m_user->saveSettings(server->url());
    QVERIFY(m_user->openAndFetch());
    const auto colourOf = [this](const QString &words) {
        return here(words)->property("color").value<QColor>().name(QColor::HexArgb);
    };
    QCOMPARE(colourOf(u"1"_s), u"#ff9b9797"_s);
    QCOMPARE(here(u"1"_s)->property("font").value<QFont>().weight(), QFont::ExtraBold);
    QCOMPARE(colourOf(u"Artist — A"_s), u"#ff201e1d"_s);
    QCOMPARE(colourOf(u"House"_s), u"#6b201e1d"_s);
    QCOMPARE(colourOf(owned), u"#ffae1800"_s);
    QCOMPARE(m_user->text(owned)->parentItem()->property("color").value<QColor>(),
             QColor(u"#fff2ef"_s));
    QCOMPARE(colourOf(u"5 DJs"_s), u"#ff201e1d"_s);
    QCOMPARE(colourOf(u"5 plays"_s), u"#9e201e1d"_s);
    QCOMPARE(colourOf(u"5 DJs · 1 tracks in the pool"_s), u"#6b201e1d"_s);
    QCOMPARE(icons(), QStringList({u"wifi.slash #ff9b9797"_s, u"gearshape #ff201e1d"_s,
                                   u"chevron.up.chevron.down #ff201e1d"_s}));
    QVERIFY(pressByPointer(m_user->shareSwitch()));
    server.reset();
    QVERIFY(pressByPointer(m_user->button(u"7d"_s)));
    QVERIFY(m_user->waitUntilIdle());
    QTRY_COMPARE(icons(), QStringList({u"dot.radiowaves.left.and.right #ffec3013"_s,
                                       u"arrow.up.circle #ffffffff"_s, u"gearshape #ff201e1d"_s,
                                       u"chevron.up.chevron.down #ff201e1d"_s,
                                       u"exclamationmark.triangle.fill #ffb07d10"_s}));
    QCOMPARE(colourOf(u"Couldn't reach the server: Connection refused"_s), u"#ff201e1d"_s);
    QVERIFY(m_user->openSetup());
    QCOMPARE(m_user->button(u"Leave & erase my plays"_s)->property("tint").value<QColor>(),
             QColor(u"#ae1800"_s));
}

void SignalScreenTest::sidebarLeadsHere()
{
    QVERIFY(m_user->openOn(Screen::Health, u"HealthScreen"_s));
    QVERIFY(pressByScreenReader(m_user->button(u"What's landing"_s)));
    QVERIFY(m_user->waitForView(u"SignalScreen"_s));
    QTRY_VERIFY(m_user->shows(u"Connect to your crew's Signal"_s));
}

void SignalScreenTest::aReplyMayComeAfterTheWindowHasClosed()
{
    ScriptedServer server;
    server.drip(ScriptedServer::message(200, "{\"min_djs\":5,\"tracks\":[]}"), 5,
                std::chrono::milliseconds(100));
    server.answer(200, "{\"djs\":1,\"plays\":2,\"tracks\":3}");
    m_user->saveSettings(server.url(), true);
    QVERIFY(m_user->open());
    QVERIFY(m_user->app().signalBusy());
    m_user->close();
    QVERIFY(m_user->waitUntilIdle());
    QCOMPARE(m_user->app().poolStats()->tracks, 3);
}

QTEST_MAIN(SignalScreenTest)
#include "signal_screen_test.moc"
