#include "support/gig_library.h"
#include "support/screen_fixture.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

constexpr QStringView nothingBlocks = u"No blockers — nothing will fail to load.";
constexpr QStringView nothingToPolish = u"Nicely polished — keys, cues and levels are in place.";

} // namespace

/// The gig check in the window, over real libraries on disk.
class GigCheckScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_user = std::make_unique<ScreenFixture>();
    }
    void cleanup() { m_user.reset(); }

    void showsALibraryWithoutCrates()
    {
        QVERIFY(open());
        QCOMPARE(
            m_user->textsFrom(u"Gig check"_s),
            QStringList({u"Gig check"_s,
                         u"Pick the crates you're taking and where they're going. Tarnwick "
                         "tells you if the set is ready."_s,
                         u"Crates"_s, u"0 picked"_s, u"No crates found in this library."_s,
                         u"Destination"_s, u"Ready"_s, u"0 tracks"_s, u"Nothing selected yet."_s,
                         u"Pick one or more crates to check."_s, u"Blockers"_s,
                         nothingBlocks.toString(), u"Polish"_s, nothingToPolish.toString()}));
    }

    void showsASetThatIsReady()
    {
        addFlawlessCrate();
        QVERIFY(open());
        QCOMPARE(m_user->textsFrom(u"Crates"_s),
                 QStringList({u"Crates"_s, u"1 picked"_s, u"1"_s, u"Destination"_s, u"Ready"_s,
                              u"1 tracks"_s,
                              u"Every track is present, gridded and tagged for Choose…."_s,
                              u"This set is good to play."_s, u"Blockers"_s,
                              nothingBlocks.toString(), u"Polish"_s, nothingToPolish.toString()}));
        QCOMPARE(colourOf(u"Ready"_s), u"#2f7d55"_s);
    }

    void showsWhatKeepsASetFromBeingReady()
    {
        addMessyCrate();
        QVERIFY(open());
        QCOMPARE(m_user->textsFrom(u"Destination"_s).sliced(1),
                 QStringList({u"Not yet"_s, u"4 tracks"_s,
                              u"4 blockers would fail to load. Clear these first."_s, u"Blockers"_s,
                              u"1"_s, u"Missing files"_s, u"3"_s, u"No beat grid"_s, u"Polish"_s,
                              u"3"_s, u"No key"_s, u"1"_s, u"Under 256 kbps"_s, u"3"_s,
                              u"No hot cues"_s, u"1"_s, u"In-set duplicates"_s}));
        QCOMPARE(colourOf(u"Not yet"_s), u"#ec3013"_s);
        QCOMPARE(countColour(u"No beat grid"_s), u"#ec3013"_s);
        QCOMPARE(countColour(u"No key"_s), u"#b07d10"_s);
    }

    void showsASetThatIsGoodEnough()
    {
        const QString path =
            m_user->addTrack(u"a.mp3"_s, {textRecord("tsng", u"No key")}, preparedFile());
        writeHomeCrate(m_user->root(), u"Set"_s, {path});
        QVERIFY(open());
        QVERIFY(m_user->shows(u"1 polish item — playable, but a quick pass would tighten it."_s));
        QCOMPARE(colourOf(u"Good enough"_s), u"#b07d10"_s);
        QVERIFY(!m_user->shows(u"This set is good to play."_s));
    }

    void aCrateIsLetGoOfAndPicked_data() { everyWay(); }
    void aCrateIsLetGoOfAndPicked()
    {
        QFETCH(const Way, way);
        addFlawlessCrate();
        addMessyCrate();
        QVERIFY(open());
        QVERIFY(m_user->shows(u"2 picked"_s));
        QVERIFY(isPicked(u"Messy"_s));
        QCOMPARE(iconOf(crate(u"Messy"_s)), u"checkmark.square.fill #ec3013"_s);
        QVERIFY(press(crate(u"Messy"_s), way));
        QTRY_VERIFY(m_user->shows(u"1 picked"_s));
        QVERIFY(!isPicked(u"Messy"_s));
        QCOMPARE(iconOf(crate(u"Messy"_s)), u"square #bab6b6"_s);
        QTRY_VERIFY(m_user->shows(u"This set is good to play."_s));
        QVERIFY(pressNext(Qt::Key_Up, u"Flawless"_s, way));
        QTRY_VERIFY(m_user->shows(u"Nothing selected yet."_s));
        QVERIFY(!m_user->shows(u"This set is good to play."_s));
        QVERIFY(m_user->shows(u"Pick one or more crates to check."_s));
        QVERIFY(pressNext(Qt::Key_Down, u"Messy"_s, way));
        QTRY_VERIFY(m_user->shows(u"4 tracks"_s));
    }

    void aDestinationStandsInTheSentence_data() { everyWay(); }
    void aDestinationStandsInTheSentence()
    {
        QFETCH(const Way, way);
        addFlawlessCrate();
        m_user->root().makeFolder(u"volumes/STICK"_s);
        QVERIFY(open());
        QVERIFY(press(destination(), way));
        QTRY_VERIFY(entry(u"STICK"_s));
        QCOMPARE(entries(), QStringList({u"Engine DJ SD"_s, u"rekordbox USB"_s, u"STICK"_s}));
        QVERIFY(m_user->waitForPicture());
        QVERIFY(chooseEntry(u"rekordbox USB"_s, way));
        QTRY_VERIFY(
            m_user->shows(u"Every track is present, gridded and tagged for rekordbox USB."_s));
        QTRY_COMPARE(accessibleName(destination()), u"rekordbox USB"_s);
        QVERIFY(m_user->shows(u"This set is good to play."_s));
    }

    void aFindingLeadsToWhereItIsMended_data()
    {
        QTest::addColumn<QString>("finding");
        QTest::addColumn<Way>("way");
        QTest::addColumn<Screen>("screen");
        const auto row = [](const char *name, const QString &finding, Way way, Screen screen) {
            QTest::newRow(name) << finding << way << screen;
        };
        row("missing", u"Missing files"_s, Way::Pointer, Screen::Missing);
        row("grid", u"No beat grid"_s, Way::Space, Screen::Cues);
        row("key", u"No key"_s, Way::Return, Screen::TrackId);
        row("bit rate", u"Under 256 kbps"_s, Way::ScreenReader, Screen::Duplicates);
        row("cues", u"No hot cues"_s, Way::Pointer, Screen::Cues);
        row("copies", u"In-set duplicates"_s, Way::Space, Screen::Duplicates);
    }
    void aFindingLeadsToWhereItIsMended()
    {
        QFETCH(const QString, finding);
        QFETCH(const Way, way);
        QFETCH(const Screen, screen);
        addMessyCrate();
        QVERIFY(open());
        QVERIFY(press(fixOf(finding), way));
        QCOMPARE(m_user->app().selection(), screen);
    }

    void aChoiceIsForgottenWithTheScreen()
    {
        addFlawlessCrate();
        QVERIFY(open());
        QVERIFY(press(crate(u"Flawless"_s), Way::ScreenReader));
        QTRY_VERIFY(m_user->shows(u"0 picked"_s));
        m_user->app().setSelection(Screen::Health);
        QVERIFY(m_user->waitForView(u"HealthScreen"_s));
        m_user->app().setSelection(Screen::GigCheck);
        QVERIFY(m_user->waitForView(u"GigCheckScreen"_s));
        QTRY_VERIFY(m_user->shows(u"1 picked"_s));
    }

    void theCrateCardIsAsHighAsItsRowsNeed()
    {
        addFlawlessCrate();
        QVERIFY(open());
        QQuickItem *heading = itemNamed(m_user->content(), u"Destination"_s, QAccessible::Heading);
        QQuickItem *row = crate(u"Flawless"_s);
        const qreal gap = heading->mapToScene({0, 0}).y() - row->mapToScene({0, row->height()}).y();
        QVERIFY2(gap > 0 && gap < 60, qPrintable(QString::number(gap)));
    }

    void goesThroughManyCratesByKeys()
    {
        for (int i = 0; i < 80; ++i)
            writeHomeCrate(m_user->root(), u"Crate %1"_s.arg(i, 2, 10, QChar(u'0')), {});
        QVERIFY(open());
        QVERIFY(m_user->shows(u"80 picked"_s));
        QVERIFY(destination()->mapToScene({0, destination()->height()}).y() <
                m_user->window()->height());
        QVERIFY(pressByKey(crate(u"Crate 00"_s), Qt::Key_End));
        QCOMPARE(accessibleName(m_user->window()->activeFocusItem()), u"Crate 79"_s);
        QVERIFY(showsFocusRing(m_user->window()->activeFocusItem()));
        QTest::keyClick(m_user->window(), Qt::Key_Space);
        QTRY_VERIFY(m_user->shows(u"79 picked"_s));
        QCOMPARE(accessibleName(m_user->window()->activeFocusItem()), u"Crate 79"_s);
    }

    void tabGoesFromTheCratesOverTheDestinationToTheFindings()
    {
        addMessyCrate();
        QVERIFY(open());
        QVERIFY(pressByKey(crate(u"Messy"_s), Qt::Key_Tab));
        QStringList reached = {focused()};
        for (int i = 0; i < 2; ++i) {
            QTest::keyClick(m_user->window(), Qt::Key_Tab);
            reached += focused();
        }
        QCOMPARE(reached, QStringList({u"Choose… Destination"_s, u"Fix Missing files"_s,
                                       u"Fix No beat grid"_s}));
    }

private:
    /// Opens the screen and waits for its first answer.
    bool open()
    {
        return m_user->openOn(Screen::GigCheck, u"GigCheckScreen"_s) &&
               QTest::qWaitFor([this] { return m_user->shows(u"Blockers"_s); }) &&
               m_user->waitForPicture();
    }

    void addFlawlessCrate()
    {
        const QString path =
            m_user->addTrack(u"fine.mp3"_s, preparedFields(u"Fine"_s), preparedFile());
        writeHomeCrate(m_user->root(), u"Flawless"_s, {path});
    }
    /// Two copies, one with a low bit rate, one bare file, and one that is nowhere.
    void addMessyCrate()
    {
        const QByteArray bare = TagBuilder().frame("TIT2", zeros(1) + "Bare").file();
        m_user->addMissingTrack(u"gone.mp3"_s);
        writeHomeCrate(
            m_user->root(), u"Messy"_s,
            {m_user->addTrack(u"a.mp3"_s, {textRecord("tsng", u"Twice")}, bare),
             m_user->addTrack(u"b.mp3"_s,
                              {textRecord("tsng", u"Twice"), textRecord("tbit", u"128")}, bare),
             m_user->addTrack(u"c.mp3"_s, {textRecord("tsng", u"Bare")}, bare),
             m_user->home(u"gone.mp3"_s)});
    }

    QQuickItem *crate(const QString &name) const
    {
        return itemNamed(m_user->content(), name, QAccessible::CheckBox);
    }
    /// Presses a crate that lies beside the one pressed before; keys go there by an arrow key.
    bool pressNext(Qt::Key arrow, const QString &name, Way way) const
    {
        if (way == Way::Pointer || way == Way::ScreenReader)
            return press(crate(name), way);
        QTest::keyClick(m_user->window(), arrow);
        if (m_user->window()->activeFocusItem() != crate(name))
            return false;
        QTest::keyClick(m_user->window(), way == Way::Space ? Qt::Key_Space : Qt::Key_Return);
        return true;
    }
    bool isPicked(const QString &name) const
    {
        return QAccessible::queryAccessibleInterface(crate(name))->state().checked;
    }
    QQuickItem *destination() const
    {
        for (QQuickItem *item : accessibleItems(m_user->content())) {
            auto *seen = QAccessible::queryAccessibleInterface(item);
            if (seen->text(QAccessible::Description) == u"Destination"_s)
                return item;
        }
        return nullptr;
    }
    QQuickItem *entry(const QString &name) const { return m_user->choice(name); }
    QStringList entries() const
    {
        QStringList names;
        for (QQuickItem *item : accessibleItems(m_user->content())) {
            if (accessibleRole(item) == QAccessible::MenuItem)
                names += accessibleName(item);
        }
        return names;
    }
    bool chooseEntry(const QString &name, Way way) const
    {
        if (way == Way::Pointer || way == Way::ScreenReader)
            return press(entry(name), way);
        for (qsizetype steps = entries().indexOf(name); steps > 0; --steps)
            QTest::keyClick(m_user->window(), Qt::Key_Down);
        QTest::keyClick(m_user->window(), way == Way::Space ? Qt::Key_Space : Qt::Key_Return);
        return true;
    }
    QQuickItem *fixOf(const QString &finding) const
    {
        for (QQuickItem *item : accessibleItems(m_user->content())) {
            auto *seen = QAccessible::queryAccessibleInterface(item);
            if (accessibleName(item) == u"Fix"_s && seen->text(QAccessible::Description) == finding)
                return item;
        }
        return nullptr;
    }
    /// What a screen reader says of the control that has the keyboard.
    QString focused() const
    {
        auto *seen = QAccessible::queryAccessibleInterface(m_user->window()->activeFocusItem());
        return seen->text(QAccessible::Name) + u' ' + seen->text(QAccessible::Description);
    }
    static QString iconOf(QQuickItem *item)
    {
        for (QQuickItem *child : item->findChildren<QQuickItem *>()) {
            if (child->property("symbol").isValid())
                return child->property("symbol").toString() + u' ' +
                       child->property("color").value<QColor>().name();
        }
        return {};
    }
    QString countColour(const QString &finding) const
    {
        QQuickItem *row = itemNamed(m_user->content(), finding, QAccessible::ListItem);
        for (QQuickItem *item : row ? accessibleItems(row) : QList<QQuickItem *>()) {
            if (accessibleRole(item) == QAccessible::StaticText)
                return item->property("color").value<QColor>().name();
        }
        return {};
    }
    QString colourOf(const QString &words) const
    {
        QQuickItem *item = itemNamed(m_user->content(), words, QAccessible::Heading);
        return item ? item->property("color").value<QColor>().name() : QString();
    }

    std::unique_ptr<ScreenFixture> m_user;
};

QTEST_MAIN(GigCheckScreenTest)
#include "gig_check_screen_test.moc"
