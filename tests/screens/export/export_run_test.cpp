#include "platform/reveal.h"
#include "screens/export/export_user.h"
#include "support/held_file.h"

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

/// Exports from the screen in the window, over real libraries and folders.
class ExportRunTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_user = std::make_unique<ExportUser>();
    }
    void cleanup() { m_user.reset(); }
    void doesNotExportWithoutAFolder_data() { everyWay(); }
    void doesNotExportWithoutAFolder();
    void exports_data();
    void exports();
    void exportsToTheChosenTarget_data();
    void exportsToTheChosenTarget();
    void showsARunningExport();
    void fillsTheBarByTheFraction();
    void keepsTheKeyboardOverAnExport();
    void reveals_data() { everyWay(); }
    void reveals();
    void saysWhyAnExportFailed();
    void comparesWithTheDevice();
    void comparesAnewForTheOtherTarget();
    void showsAllOfItAtOnce();
    void closesWhileAnExportRuns();

private:
    std::unique_ptr<ExportUser> m_user;
};

void ExportRunTest::doesNotExportWithoutAFolder()
{
    QFETCH(const Way, way);
    m_user->addTracks(2);
    QVERIFY(m_user->open());
    QQuickItem *button = m_user->button(u"Export 2 tracks"_s);
    QCOMPARE(colourOf(button->property("background").value<QQuickItem *>()), neutral400);
    // No key reaches it.
    QCOMPARE(press(button, way), way == Way::Pointer || way == Way::ScreenReader);
    QVERIFY(m_user->waitUntilIdle());
    QVERIFY(!m_user->app().exporting() && !m_user->app().lastExport());
    QVERIFY(!m_user->shows(u"Starting…"_s));
}

void ExportRunTest::exports_data()
{
    everyWay();
}

void ExportRunTest::exports()
{
    QFETCH(const Way, way);
    m_user->addTracks(3);
    QVERIFY(m_user->open());
    QVERIFY(m_user->choose(m_user->folder()));
    QQuickItem *button = m_user->button(u"Export 3 tracks"_s);
    QCOMPARE(colourOf(button->property("background").value<QQuickItem *>()), accent);
    QVERIFY(press(button, way));
    QVERIFY(m_user->waitUntilIdle());
    QVERIFY(QFileInfo(m_user->folder() + u"/Engine Library/Database2/m.db"_s).size() > 0);
    QTRY_VERIFY(m_user->shows(u"3 tracks · 0 crates → m.db"_s));
    QTRY_VERIFY(m_user->showsToast(u"Exported 3 tracks to Engine DJ SD"_s));
    QVERIFY(iconsOf(m_user->card("ExportCard")).contains(u"checkmark.seal.fill "_s + good));
    QVERIFY(!m_user->shows(u"Writing crates…"_s));
    QVERIFY(button->isEnabled());
}

void ExportRunTest::exportsToTheChosenTarget_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("outcome");
    QTest::newRow("rekordbox") << u"rekordbox USB"_s << u"rekordbox.xml"_s
                               << u"2 tracks · 0 crates → rekordbox.xml"_s;
    QTest::newRow("backup") << u"Serato backup"_s << u"_Serato_ backup"_s
                            << u"1 tracks · 0 crates → _Serato_ backup"_s;
}

void ExportRunTest::exportsToTheChosenTarget()
{
    QFETCH(const QString, target);
    QFETCH(const QString, written);
    QFETCH(const QString, outcome);
    m_user->addTracks(2);
    QVERIFY(m_user->open());
    QVERIFY(press(m_user->button(target), Way::Pointer));
    QVERIFY(m_user->choose(m_user->folder()));
    QVERIFY(m_user->exportAndWait(u"Export 2 tracks"_s));
    QCOMPARE(m_user->root().names(u"GIG USB"_s), QStringList(written));
    QTRY_VERIFY(m_user->shows(outcome));
}

void ExportRunTest::showsARunningExport()
{
    m_user->addTracks(3);
    QVERIFY(m_user->open());
    QVERIFY(m_user->choose(m_user->folder()));
    QTRY_VERIFY(m_user->shows(nothingToCompare));
    QVERIFY(m_user->exportAndWait(u"Export 3 tracks"_s));
    QTRY_VERIFY(m_user->shows(u"Drift from the device"_s));
    HeldFile held(u"Database2"_s);
    QQuickItem *button = m_user->button(u"Export 3 tracks"_s);
    QStringList first;
    connect(&m_user->app(), &AppState::exportingChanged, this, [&] {
        if (first.isEmpty())
            first = m_user->textsFrom(u"Export"_s).first(3);
    });
    QVERIFY(press(button, Way::Pointer));
    QCOMPARE(first, QStringList({u"Export"_s, u"Starting…"_s, u"0 of 0"_s}));
    QVERIFY(!button->isEnabled());
    // The outcome of the one before has gone.
    QVERIFY(!m_user->button(u"Reveal"_s));
    QVERIFY(held.waitUntilReached());
    QTRY_VERIFY(m_user->shows(u"Creating Engine library…"_s));
    QVERIFY(m_user->shows(u"0 of 3"_s));
    QVERIFY(!m_user->shows(u"Starting…"_s));
    // The rest of the screen can be used meanwhile.
    QVERIFY(press(m_user->button(u"Serato backup"_s), Way::Pointer));
    QTRY_VERIFY(m_user->shows(nothingToCompare));
    QVERIFY(!button->isEnabled());
    held.release();
    QVERIFY(m_user->waitUntilIdle());
    QTRY_VERIFY(button->isEnabled());
    QVERIFY(!m_user->shows(u"Creating Engine library…"_s));
    QVERIFY(m_user->button(u"Reveal"_s));
}

void ExportRunTest::fillsTheBarByTheFraction()
{
    m_user->addTracks(120);
    QVERIFY(m_user->open());
    QVERIFY(m_user->choose(m_user->folder()));
    QStringList seen;
    connect(&m_user->app(), &AppState::exportingChanged, this, [&] {
        const auto bars = partsOf(m_user->card("ExportCard"), "Meter_QMLTYPE");
        if (bars.isEmpty())
            return;
        const QQuickItem *bar = bars.first();
        const QQuickItem *fill = bar->childItems().first();
        seen += u"%1 %2 %3"_s.arg(fill->width() / bar->width(), 0, 'f', 3)
                    .arg(colourOf(bar), colourOf(fill));
    });
    QVERIFY(press(m_user->button(u"Export 120 tracks"_s), Way::Return));
    QVERIFY(m_user->waitUntilIdle());
    const QString colours = u" #ffeae7e7 "_s + accent;
    // The first report comes ahead of the bar's layout.
    QCOMPARE(seen.sliced(1), QStringList({u"0.000"_s + colours, u"0.417"_s + colours,
                                          u"0.833"_s + colours, u"1.000"_s + colours}));
}

void ExportRunTest::keepsTheKeyboardOverAnExport()
{
    m_user->addTracks(2);
    QVERIFY(m_user->open());
    QVERIFY(m_user->choose(m_user->folder()));
    QVERIFY(press(m_user->button(u"Export 2 tracks"_s), Way::Space));
    QVERIFY(m_user->waitUntilIdle());
    QTRY_COMPARE(m_user->focused(), u"Export 2 tracks"_s);
}

void ExportRunTest::reveals()
{
    QFETCH(const Way, way);
    m_user->addTracks(2);
    QVERIFY(m_user->open());
    QVERIFY(m_user->choose(m_user->folder()));
    QVERIFY(m_user->exportAndWait(u"Export 2 tracks"_s));
    QStringList shown;
    const platform::ScopedFileManager manager([&](const QString &path) { shown += path; });
    QVERIFY(press(m_user->button(u"Reveal"_s), way));
    QCOMPARE(shown, QStringList(m_user->folder() + u"/Engine Library/Database2/m.db"_s));
    QCOMPARE(m_user->button(u"Reveal"_s)->property("tint").value<QColor>(), QColor(u"#ae1800"_s));
}

void ExportRunTest::saysWhyAnExportFailed()
{
    m_user->addTracks(2);
    QVERIFY(m_user->open());
    QVERIFY(press(m_user->button(u"rekordbox USB"_s), Way::Pointer));
    QVERIFY(m_user->choose(m_user->root().write(u"GIG USB"_s, "a file")));
    QVERIFY(m_user->exportAndWait(u"Export 2 tracks"_s));
    QVERIFY(m_user->app().toast().has_value());
    QTRY_VERIFY(m_user->showsToast(m_user->app().toast()->message));
    QVERIFY(!m_user->button(u"Reveal"_s));
    QVERIFY(m_user->button(u"Export 2 tracks"_s)->isEnabled());
    QTRY_VERIFY(m_user->shows(nothingToCompare));
}

void ExportRunTest::comparesWithTheDevice()
{
    m_user->addTracks(3);
    QVERIFY(m_user->open());
    QVERIFY(m_user->choose(m_user->folder()));
    QVERIFY(m_user->exportAndWait(u"Export 3 tracks"_s));
    QTRY_VERIFY(m_user->shows(u"Drift from the device"_s));
    QVERIFY(m_user->waitForPicture());
    QCOMPARE(m_user->textsFrom(u"Drift from the device"_s).first(5),
             QStringList(
                 {u"Drift from the device"_s, u"0"_s, u"Serato only"_s, u"0"_s, u"Device only"_s}));
    const auto figures = [&] {
        QStringList all;
        for (const QQuickItem *figure : partsOf(m_user->card("DriftCard"), "Figure_QMLTYPE"))
            all += figure->property("text").toString() + u' ' + colourOf(figure);
        return all;
    };
    QCOMPARE(figures(), QStringList({u"0 "_s + good, u"0 "_s + good}));
    QVERIFY(!m_user->shows(nothingToCompare));
    m_user->app().dropFromLibrary(ScannedTrack(m_user->app().result()->tracks.front()));
    QTRY_COMPARE(figures(), QStringList({u"0 "_s + good, u"1 "_s + warn}));
    QVERIFY(m_user->button(u"Export 2 tracks"_s));
    QVERIFY(m_user->shows(u"Re-export to bring the device in line with Serato."_s));
    QVERIFY(m_user->exportAndWait(u"Export 2 tracks"_s));
    QTRY_COMPARE(figures(), QStringList({u"0 "_s + good, u"0 "_s + good}));
}

void ExportRunTest::comparesAnewForTheOtherTarget()
{
    m_user->addTracks(1);
    QVERIFY(m_user->open());
    QVERIFY(m_user->choose(m_user->folder()));
    QVERIFY(m_user->exportAndWait(u"Export 1 tracks"_s));
    QTRY_VERIFY(m_user->shows(u"Drift from the device"_s));
    QVERIFY(press(m_user->button(u"rekordbox USB"_s), Way::Pointer));
    QVERIFY(!m_user->shows(u"Drift from the device"_s));
    QTRY_VERIFY(m_user->shows(nothingToCompare));
    QVERIFY(press(m_user->button(u"Engine DJ SD"_s), Way::Pointer));
    QVERIFY(!m_user->shows(nothingToCompare));
    QTRY_VERIFY(m_user->shows(u"Drift from the device"_s));
}

void ExportRunTest::showsAllOfItAtOnce()
{
    m_user->addTracks(2);
    QVERIFY(m_user->open());
    QVERIFY(m_user->choose(m_user->folder()));
    QVERIFY(m_user->exportAndWait(u"Export 2 tracks"_s));
    QTRY_VERIFY(m_user->shows(u"Drift from the device"_s));
    QTRY_VERIFY(!m_user->shows(u"Exported 2 tracks to Engine DJ SD"_s));
    QCOMPARE(
        m_user->textsFrom(u"Export"_s),
        QStringList({u"Export"_s, u"2 tracks · 0 crates → m.db"_s, engineNote,
                     u"Drift from the device"_s, u"0"_s, u"Serato only"_s, u"0"_s, u"Device only"_s,
                     u"Re-export to bring the device in line with Serato."_s}));
}

void ExportRunTest::closesWhileAnExportRuns()
{
    m_user->addTracks(2);
    QVERIFY(m_user->open());
    QVERIFY(m_user->choose(m_user->folder()));
    HeldFile held(u"Database2"_s);
    QVERIFY(press(m_user->button(u"Export 2 tracks"_s), Way::Pointer));
    QVERIFY(held.waitUntilReached());
    m_user->close();
    held.release();
    QVERIFY(m_user->waitUntilIdle());
    QTest::qWait(50);
    QCOMPARE(m_user->app().lastExport()->trackCount, 2);
}

QTEST_MAIN(ExportRunTest)
#include "export_run_test.moc"
