// Whether all that the window shows has its place: at every size, with large figures, with names
// that are too long for any row, and with nothing at all.

#include "safety/change_log.h"
#include "support/gain_files.h"
#include "support/gig_library.h"
#include "support/misfits.h"
#include "support/screen_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize sizes[] = {{1120, 720}, {1440, 900}, {1920, 1200}};

enum class Library { Empty, Large, LongNames };

constexpr int missingTracks = 12345;

/// A name that no row has room for.
QString longName(const QString &start)
{
    return start + u" and the Everlasting Midnight Orchestra of the Western Shore"_s.repeated(5);
}

/// Everything on screen that scrolls.
QList<QQuickItem *> scrollersOf(QQuickItem *root)
{
    return itemsWhere(root,
                      [](const QQuickItem *item) { return item->inherits("QQuickFlickable"); });
}

} // namespace

Q_DECLARE_METATYPE(Library)

class FitTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_user = std::make_unique<ScreenFixture>();
    }
    void cleanup() { m_user.reset(); }

    void seesWhatHasNoPlace_data();
    void seesWhatHasNoPlace();
    void seesNothingWrongWithWhatHasItsPlace();

    void everythingHasItsPlace_data();
    void everythingHasItsPlace();
    void firstViewHasItsPlace();
    void longMessageHasItsPlace();

private:
    void fillLarge();
    void fillWithLongNames();
    void fillChangeLog(const QString &words);
    QStringList misfitsOfScreen(Eliding eliding);
    QQuickItem *toastBar() const { return itemsOfType(m_user->content(), "ToastBar").value(0); }

    std::unique_ptr<ScreenFixture> m_user;
};

void FitTest::seesWhatHasNoPlace_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("fault");
    QTest::newRow("a text wider than its item")
        << QByteArray("Item { PlainText { width: 20; text: 'far too long for this' } }")
        << u" is cut off"_s;
    QTest::newRow("a figure wider than its item")
        << QByteArray("Item { Figure { width: 20; text: '1234567' } }") << u" is cut off"_s;
    QTest::newRow("a text that leaves the window")
        << QByteArray("Item { PlainText { x: 470; text: 'at the edge' } }") << u" is cut off"_s;
    QTest::newRow("a text below the edge of a clip")
        << QByteArray("Item { Item { width: 200; height: 8; clip: true\n"
                      "PlainText { text: 'half' } } }")
        << u" is cut off"_s;
    QTest::newRow("a text that leaves its sheet")
        << QByteArray("Item { Rectangle { width: 20; height: 20\n"
                      "PlainText { text: 'out of it' } } }")
        << u" leaves its QQuickRectangle"_s;
    QTest::newRow("a text over another")
        << QByteArray("Item { PlainText { text: 'one' } PlainText { x: 8; text: 'two' } }")
        << u" lies over "_s;
    QTest::newRow("a text over an icon")
        << QByteArray("Item { PlainText { text: 'one' } Icon { x: 8; symbol: 'tag' } }")
        << u" lies over "_s;
    QTest::newRow("a text cut short")
        << QByteArray("Item { PlainText { width: 20; text: 'far too long'; "
                      "elide: Text.ElideRight } }")
        << u" is cut short"_s;
}

void FitTest::seesWhatHasNoPlace()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, fault);
    QmlScene scene(body);
    const QStringList found = misfitsOf(scene.root(), Eliding::Wrong);
    QVERIFY2(found.value(0).contains(fault), qPrintable(found.join(u'\n')));
}

void FitTest::seesNothingWrongWithWhatHasItsPlace()
{
    QmlScene scene("Item { PlainText { width: 60; text: 'far too long'; elide: Text.ElideRight }\n"
                   "Flickable { y: 30; width: 200; height: 25; contentHeight: 200; clip: true\n"
                   "Column { PlainText { text: 'one' } PlainText { text: 'two' } } }\n"
                   "PillButton { y: 80; text: 'three'; symbol: 'tag' } }");
    QCOMPARE(misfitsOf(scene.root(), Eliding::Allowed), QStringList());
}

/// Tracks by the thousand, and some of everything else.
void FitTest::fillLarge()
{
    QStringList paths;
    for (int number = 0; number < 400; ++number) {
        const bool isCopy = number % 2 != 0;
        QByteArrayList fields = {
            textRecord("tart", u"A%1"_s.arg(number / 4)),
            textRecord("tsng", u"T%1"_s.arg(number / 2) + (number % 8 == 0 ? u" (Dub)"_s : u""_s)),
            textRecord("tbit", u"320.0kbps"), numberRecord("utpc", quint32(number * 101))};
        if (number % 4 != 0)
            fields += textRecord("tgen", number % 8 == 1 ? u"house"_s : u"House"_s);
        const QByteArray content =
            isCopy ? analysedFile(number % 16 == 1 ? "-13.6" : "3.2") : preparedFile("3.2");
        paths += m_user->addTrack(u"%1.mp3"_s.arg(number), fields, content);
    }
    for (int number = 0; number < missingTracks; ++number)
        m_user->addMissingTrack(u"m%1.mp3"_s.arg(number));
    for (int number = 0; number < 60; ++number)
        writeHomeCrate(m_user->root(), u"Crate %1"_s.arg(number), paths.first(300 + number));
}

/// The same with names that leave no room for anything else.
void FitTest::fillWithLongNames()
{
    QStringList paths;
    for (int number = 0; number < 24; ++number) {
        const QString song = longName(u"Song %1"_s.arg(number / 2 % 3));
        QByteArrayList fields = {textRecord("tart", longName(u"Artist"_s)),
                                 textRecord("tsng", song + (number % 2 ? u" (Dub)"_s : u""_s)),
                                 textRecord("tbit", u"320.0kbps"),
                                 textRecord("tkey", longName(u"Key"_s)),
                                 numberRecord("utpc", 4294967295U)};
        if (number % 5 != 0) {
            const QString genre = longName(u"Genre"_s);
            fields += textRecord("tgen", number % 5 == 1 ? genre.toLower() : genre);
        }
        const QByteArray content = number % 3 == 0 ? analysedFile("-99.9") : preparedFile("3.2");
        const QString file = longName(QString::number(number)).left(200);
        paths += m_user->addTrack(file + u".mp3"_s, fields, content);
    }
    m_user->addMissingTrack(longName(u"Lost"_s) + u".mp3"_s,
                            {textRecord("tart", longName(u"Artist"_s))});
    for (const QString &name : {u"One"_s, u"Two"_s})
        writeHomeCrate(m_user->root(), longName(name).left(200), paths);
}

/// Changes of every kind, two of each: one that can be undone and one that can't.
void FitTest::fillChangeLog(const QString &words)
{
    ChangeLog log;
    for (const ChangeEntry::Kind kind : ChangeEntry::allKinds()) {
        log.append({.kind = kind, .target = words, .detail = words});
        log.append({.kind = kind, .target = words, .detail = words, .reversibleDays = {}});
    }
}

/// What of a screen has no place, at its top and at its end.
QStringList FitTest::misfitsOfScreen(Eliding eliding)
{
    QStringList found;
    for (const bool atEnd : {false, true}) {
        for (QQuickItem *area : scrollersOf(m_user->content())) {
            const qreal top = area->property("originY").toReal();
            const qreal end = top + area->property("contentHeight").toReal() - area->height();
            area->setProperty("contentY", atEnd ? std::max(top, end) : top);
        }
        m_user->waitForPicture();
        found += misfitsOf(m_user->content(), eliding) + crowdedButtonsOf(m_user->content());
    }
    return found;
}

void FitTest::everythingHasItsPlace_data()
{
    QTest::addColumn<Library>("library");
    QTest::addColumn<QSize>("size");
    for (const QSize &size : sizes) {
        const auto row = [&](const char *name, Library library) {
            QTest::addRow("%s at %dx%d", name, size.width(), size.height()) << library << size;
        };
        row("no tracks", Library::Empty);
        row("large figures", Library::Large);
        row("long names", Library::LongNames);
    }
}

void FitTest::everythingHasItsPlace()
{
    QFETCH(Library, library);
    QFETCH(QSize, size);
    if (library == Library::Large)
        fillLarge();
    if (library == Library::LongNames)
        fillWithLongNames();
    if (library != Library::Empty)
        fillChangeLog(library == Library::Large ? u"A change"_s : longName(u"A change"_s));
    // A name may be cut short where it is too long, a text of the program's own nowhere.
    const Eliding eliding = library == Library::LongNames ? Eliding::Allowed : Eliding::Wrong;
    QVERIFY(m_user->openOn(Screen::LibraryScore, u"LibraryScoreScreen"_s));
    m_user->window()->resize(size);
    QStringList found;
    for (const ScreenInfo &screen : allScreens()) {
        // Those to come look alike but for the longest title.
        if (!screen.isImplemented && screen.screen != Screen::Booth)
            continue;
        m_user->app().setSelection(screen.screen);
        m_user->waitUntilIdle();
        if (screen.screen == Screen::GigCheck)
            QTRY_VERIFY(m_user->shows(u"Blockers"_s));
        for (const QString &misfit : misfitsOfScreen(eliding))
            found += screen.rawValue + u": "_s + misfit;
    }
    for (const QString &misfit : found)
        qInfo().noquote() << misfit;
    QVERIFY(found.isEmpty());
}

void FitTest::firstViewHasItsPlace()
{
    for (const QSize &size : sizes) {
        m_user->open(AppState::Environment::Ignored, size);
        QVERIFY(m_user->waitForPicture());
        QCOMPARE(misfitsOfScreen(Eliding::Wrong), QStringList());
    }
}

void FitTest::longMessageHasItsPlace()
{
    m_user->open();
    m_user->app().showToast(longName(u"Couldn't write"_s), Reversible::Yes);
    QTRY_VERIFY(toastBar() && toastBar()->opacity() == 1.0);
    QQuickItem *bar = toastBar();
    QCOMPARE(misfitsOf(bar, Eliding::Wrong), QStringList());
    QVERIFY(QRectF({}, m_user->content()->size()).contains(placeOf(bar)));
}

QTEST_MAIN(FitTest)
#include "fit_test.moc"
