#include "screens/export/export_user.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

/// The choices on the export screen in the window, and what it says of them.
class ExportScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_user = std::make_unique<ExportUser>();
    }
    void cleanup() { m_user.reset(); }
    void showsAnEmptyLibrary();
    void standsInTwoColumns();
    void showsWhatIsChosen();
    void showsTheSymbolsOfEachTarget_data();
    void showsTheSymbolsOfEachTarget();
    void showsWhatEachTargetTakesAlong_data();
    void showsWhatEachTargetTakesAlong();
    void choosesATarget_data() { everyWay(); }
    void choosesATarget();
    void arrowKeysGoFromTargetToTarget();
    void choosesAFolder_data() { everyWay(); }
    void choosesAFolder();
    void keepsALongNameInsideItsButton();
    void tabGoesThroughTheControlsInReadingOrder();

private:
    std::unique_ptr<ExportUser> m_user;
};

void ExportScreenTest::showsAnEmptyLibrary()
{
    QVERIFY(m_user->open());
    QCOMPARE(
        m_user->textsFrom(u"USB & export"_s),
        QStringList({u"USB & export"_s,
                     u"Take your library to Engine DJ or rekordbox — cues, loops and grids come "
                     "along. Exporting never changes your Serato library."_s,
                     u"Target"_s, u"What carries over"_s, u"Hot cues"_s, u"Carries"_s, u"Loops"_s,
                     u"Carries"_s, u"Beat grids"_s, u"Carries"_s, u"Stems"_s, u"Carries"_s,
                     u"Export"_s, engineNote}));
    QVERIFY(m_user->button(u"Choose destination…"_s)->isEnabled());
    QVERIFY(!m_user->button(u"Export 0 tracks"_s)->isEnabled());
    QVERIFY(!m_user->button(u"Reveal"_s));
    QCOMPARE(m_user->colourOfText(engineNote), inkFaint);
}

void ExportScreenTest::standsInTwoColumns()
{
    QVERIFY(m_user->open());
    QVERIFY(m_user->choose(m_user->folder()));
    QTRY_VERIFY(m_user->shows(nothingToCompare));
    QVERIFY(m_user->waitForPicture());
    const auto place = [&](const char *type) {
        const QQuickItem *card = m_user->card(type);
        return card->mapRectToScene(card->boundingRect());
    };
    QVERIFY(place("TargetCard").right() < place("ExportCard").left());
    QCOMPARE(place("TargetCard").top(), place("ExportCard").top());
    QCOMPARE(place("CarryCard").left(), place("TargetCard").left());
    QVERIFY(place("CarryCard").top() > place("TargetCard").bottom());
    QCOMPARE(place("DriftCard").left(), place("ExportCard").left());
    QVERIFY(place("DriftCard").top() > place("ExportCard").bottom());
}

void ExportScreenTest::showsWhatIsChosen()
{
    m_user->addTracks(3);
    m_user->addMissingTrack(u"Music/gone.mp3"_s);
    QVERIFY(m_user->open());
    QVERIFY(m_user->button(u"Export 3 tracks"_s));
    QCOMPARE(iconsOf(m_user->card("ExportCard")),
             QStringList({u"folder "_s + ink, u"square.and.arrow.up "_s + white}));
    QStringList rows;
    for (QQuickItem *row : partsOf(m_user->screen(), "TargetRow_QMLTYPE")) {
        auto *seen = QAccessible::queryAccessibleInterface(row);
        QCOMPARE(seen->role(), QAccessible::Button);
        QVERIFY(seen->state().selectable);
        rows += seen->text(QAccessible::Name) + u"|"_s + seen->text(QAccessible::Description) +
                (seen->state().selected ? u"|selected"_s : QString());
    }
    QCOMPARE(
        rows,
        QStringList({u"Engine DJ SD|An Engine Library (m.db) for Denon / Engine DJ hardware.|"
                     "selected"_s,
                     u"rekordbox USB|A rekordbox collection XML for Pioneer / AlphaTheta gear."_s,
                     u"Serato backup|A copy of your Serato library files, for safekeeping."_s}));
}

void ExportScreenTest::showsTheSymbolsOfEachTarget_data()
{
    QTest::addColumn<int>("chosen");
    QTest::newRow("Engine") << 0;
    QTest::newRow("rekordbox") << 1;
    QTest::newRow("backup") << 2;
}

void ExportScreenTest::showsTheSymbolsOfEachTarget()
{
    QFETCH(const int, chosen);
    QVERIFY(m_user->open());
    const auto rows = partsOf(m_user->screen(), "TargetRow_QMLTYPE");
    QCOMPARE(rows.size(), 3);
    QVERIFY(press(rows.at(chosen), Way::ScreenReader));
    const QStringList symbols = {u"sdcard "_s + ink, u"externaldrive "_s + ink,
                                 u"archivebox "_s + ink};
    for (int row = 0; row < 3; ++row) {
        const bool isChosen = row == chosen;
        QCOMPARE(iconsOf(rows.at(row)),
                 QStringList(
                     {isChosen ? u"largecircle.fill.circle "_s + accent : u"circle "_s + neutral400,
                      symbols.at(row)}));
        const auto *ground = rows.at(row)->property("background").value<QQuickItem *>();
        QCOMPARE(colourOf(ground), isChosen ? accent100 : u"#00000000"_s);
        const auto words = partsOf(rows.at(row), "PlainText_QMLTYPE");
        QCOMPARE(colourOf(words.at(0)), ink);
        QCOMPARE(colourOf(words.at(1)), inkFaint);
    }
}

void ExportScreenTest::showsWhatEachTargetTakesAlong_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("stems");
    QTest::addColumn<QString>("stemsNote");
    QTest::addColumn<QString>("hardwareNote");
    QTest::newRow("Engine") << u"Engine DJ SD"_s << true << QString() << engineNote;
    QTest::newRow("rekordbox") << u"rekordbox USB"_s << false
                               << u"rekordbox has no stems format — everything else transfers."_s
                               << QString();
    QTest::newRow("backup") << u"Serato backup"_s << true << QString() << QString();
}

void ExportScreenTest::showsWhatEachTargetTakesAlong()
{
    QFETCH(const QString, target);
    QFETCH(const bool, stems);
    QFETCH(const QString, stemsNote);
    QFETCH(const QString, hardwareNote);
    QVERIFY(m_user->open());
    QVERIFY(press(m_user->button(target), Way::ScreenReader));
    QStringList texts = {u"What carries over"_s,
                         u"Hot cues"_s,
                         u"Carries"_s,
                         u"Loops"_s,
                         u"Carries"_s,
                         u"Beat grids"_s,
                         u"Carries"_s,
                         u"Stems"_s,
                         stems ? u"Carries"_s : u"Dropped"_s};
    texts += stemsNote;
    texts += u"Export"_s;
    texts += hardwareNote;
    texts.removeAll(QString());
    QCOMPARE(m_user->textsFrom(u"What carries over"_s), texts);
    const QString carries = u"checkmark.circle.fill "_s + good;
    QCOMPARE(iconsOf(m_user->card("CarryCard")),
             QStringList({carries, carries, carries,
                          stems ? carries : u"xmark.circle.fill "_s + neutral400}));
    QCOMPARE(m_user->colourOfText(stems ? u"Carries"_s : u"Dropped"_s), stems ? good : neutral500);
}

void ExportScreenTest::choosesATarget()
{
    QFETCH(const Way, way);
    QVERIFY(m_user->open());
    const auto isChosen = [&](const QString &name) {
        return QAccessible::queryAccessibleInterface(m_user->button(name))->state().selected;
    };
    for (const QString &name : {u"Serato backup"_s, u"rekordbox USB"_s, u"Engine DJ SD"_s}) {
        QVERIFY(press(m_user->button(name), way));
        QTRY_VERIFY(isChosen(name));
        QCOMPARE(isChosen(u"Engine DJ SD"_s) + isChosen(u"rekordbox USB"_s) +
                     isChosen(u"Serato backup"_s),
                 1);
    }
}

void ExportScreenTest::arrowKeysGoFromTargetToTarget()
{
    QVERIFY(m_user->open());
    QVERIFY(pressByKey(m_user->button(u"Engine DJ SD"_s), Qt::Key_Down));
    QCOMPARE(m_user->focused(), u"rekordbox USB"_s);
    QVERIFY(showsFocusRing(m_user->button(u"rekordbox USB"_s)));
    QVERIFY(!m_user->shows(u"Dropped"_s));
    QTest::keyClick(m_user->window(), Qt::Key_Space);
    QVERIFY(m_user->shows(u"Dropped"_s));
    QTest::keyClick(m_user->window(), Qt::Key_Down);
    QCOMPARE(m_user->focused(), u"Serato backup"_s);
    QTest::keyClick(m_user->window(), Qt::Key_Down);
    QCOMPARE(m_user->focused(), u"Serato backup"_s);
    QTest::keyClick(m_user->window(), Qt::Key_Up);
    QTest::keyClick(m_user->window(), Qt::Key_Up);
    QTest::keyClick(m_user->window(), Qt::Key_Up);
    QCOMPARE(m_user->focused(), u"Engine DJ SD"_s);
}

void ExportScreenTest::choosesAFolder()
{
    QFETCH(const Way, way);
    m_user->addTracks(1);
    QVERIFY(m_user->open());
    QVERIFY(m_user->choose(m_user->folder(), way));
    QTRY_VERIFY(m_user->button(u"GIG USB"_s));
    QVERIFY(!m_user->button(u"Choose destination…"_s));
    QVERIFY(m_user->button(u"Export 1 tracks"_s)->isEnabled());
    QTRY_VERIFY(m_user->shows(nothingToCompare));
    QCOMPARE(iconsOf(m_user->card("DriftCard")), QStringList(u"info.circle "_s + inkSoft));
    QVERIFY(!m_user->shows(u"Drift from the device"_s));
    QVERIFY(!QFileInfo::exists(m_user->folder()));
}

void ExportScreenTest::keepsALongNameInsideItsButton()
{
    QVERIFY(m_user->open());
    const QString name = QString(120, u'w');
    QVERIFY(m_user->choose(m_user->root().path(name)));
    QTRY_VERIFY(m_user->button(name));
    QVERIFY(m_user->waitForPicture());
    const QQuickItem *sheet = m_user->card("ExportCard");
    for (const QQuickItem *part : partsOf(m_user->card("ExportCard"), "PlainText_QMLTYPE")) {
        const QRectF place = part->mapRectToItem(sheet, part->boundingRect());
        QVERIFY(place.left() >= 18 && place.right() <= sheet->width() - 18);
    }
}

void ExportScreenTest::tabGoesThroughTheControlsInReadingOrder()
{
    m_user->addTracks(2);
    QVERIFY(m_user->open());
    QVERIFY(m_user->choose(m_user->folder()));
    QVERIFY(m_user->exportAndWait(u"Export 2 tracks"_s));
    QVERIFY(pressByKey(m_user->button(u"Rescan"_s), Qt::Key_Tab));
    QStringList reached;
    for (int i = 0; i < 6; ++i) {
        QVERIFY(showsFocusRing(m_user->window()->activeFocusItem()));
        reached += m_user->focused();
        QTest::keyClick(m_user->window(), Qt::Key_Tab);
    }
    QCOMPARE(reached, QStringList({u"Engine DJ SD"_s, u"rekordbox USB"_s, u"Serato backup"_s,
                                   u"GIG USB"_s, u"Export 2 tracks"_s, u"Reveal"_s}));
}

QTEST_MAIN(ExportScreenTest)
#include "export_screen_test.moc"
