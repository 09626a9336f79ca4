#include "foundation/screen.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class ScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsEveryScreen_data();
    void knowsEveryScreen();
    void takesNothingButARawValue_data();
    void takesNothingButARawValue();
    void listsTheScreensInTheOrderOfTheEnumeration();
    void groupsTheSidebar();
    void makesTheGroupsOnce();
};

void ScreenTest::knowsEveryScreen_data()
{
    QTest::addColumn<Screen>("screen");
    QTest::addColumn<QString>("rawValue");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QString>("phaseNote");
    QTest::addColumn<bool>("isImplemented");
    const auto row = [](Screen screen, const char *rawValue, const char *title, const char *symbol,
                        const char *phaseNote, bool isImplemented) {
        QTest::newRow(rawValue) << screen << QString::fromUtf8(rawValue) << QString::fromUtf8(title)
                                << QString::fromUtf8(symbol) << QString::fromUtf8(phaseNote)
                                << isImplemented;
    };
    row(Screen::LibraryScore, "libraryScore", "Library score", "gauge.medium", "Later phase", true);
    row(Screen::Health, "health", "Health", "heart.text.square", "Later phase", true);
    row(Screen::LibrarySafety, "librarySafety", "Library & safety", "lock.shield", "Later phase",
        true);
    row(Screen::FixQueue, "fixQueue", "Fix queue", "checklist", "Repair — Phase 3", true);
    row(Screen::Duplicates, "duplicates", "Duplicates", "square.on.square", "Repair — Phase 3",
        true);
    row(Screen::Missing, "missing", "Missing files", "questionmark.folder", "Repair — Phase 3",
        true);
    row(Screen::Cues, "cues", "Cues & grids", "waveform.path.ecg", "Repair — Phase 3", true);
    row(Screen::Versions, "versions", "Versions", "square.stack.3d.up", "Repair — Phase 3", true);
    row(Screen::TrackId, "trackID", "Track ID", "tag", "Repair — Phase 3", true);
    row(Screen::GigCheck, "gigCheck", "Gig check", "checkmark.seal", "Prep — Phase 4", true);
    row(Screen::GigRun, "gigRun", "Gig run", "bolt.fill", "Prep — Phase 4", true);
    row(Screen::Loudness, "loudness", "Loudness", "speaker.wave.3", "Prep — Phase 4", true);
    row(Screen::Stems, "stems", "Stems", "square.split.1x2", "Prep — Phase 4", false);
    row(Screen::Hygiene, "hygiene", "Crate hygiene", "sparkles", "Prep — Phase 4", true);
    row(Screen::Suggestions, "suggestions", "Suggestions", "lightbulb", "Play / backend — Phase 6",
        false);
    row(Screen::Signal, "signal", "What's landing", "antenna.radiowaves.left.and.right",
        "Play / backend — Phase 6", true);
    row(Screen::Transitions, "transitions", "Transitions", "arrow.left.arrow.right",
        "Play / backend — Phase 6", false);
    row(Screen::Debrief, "debrief", "Debrief", "chart.bar.doc.horizontal",
        "Play / backend — Phase 6", false);
    row(Screen::Booth, "booth", "Booth companion", "iphone", "Play / backend — Phase 6", false);
    row(Screen::Community, "community", "Community IDs", "person.3", "Play / backend — Phase 6",
        false);
    row(Screen::Watch, "watch", "Always clean", "eye", "Automate — Phase 6", false);
    row(Screen::ChangeLog, "changeLog", "Change log", "clock.arrow.circlepath",
        "Safety layer — Phase 2", true);
    row(Screen::Export, "export", "USB & export", "externaldrive", "Export — Phase 5", true);
    row(Screen::Account, "account", "Account", "person.crop.circle", "Later phase", false);
}

void ScreenTest::knowsEveryScreen()
{
    QFETCH(Screen, screen);
    QFETCH(QString, rawValue);
    const ScreenInfo &info = infoOf(screen);
    QCOMPARE(info.screen, screen);
    QCOMPARE(info.rawValue, rawValue);
    QTEST(info.title, "title");
    QTEST(info.symbol, "symbol");
    QTEST(info.phaseNote, "phaseNote");
    QTEST(info.isImplemented, "isImplemented");
    QCOMPARE(screenFromRawValue(rawValue), std::optional(screen));
}

void ScreenTest::takesNothingButARawValue_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("other letter case") << u"FixQueue"_s;
    QTest::newRow("a title") << u"Fix queue"_s;
    QTest::newRow("a blank behind") << u"health "_s;
}

void ScreenTest::takesNothingButARawValue()
{
    QFETCH(QString, text);
    QVERIFY(!screenFromRawValue(text));
}

void ScreenTest::listsTheScreensInTheOrderOfTheEnumeration()
{
    QCOMPARE(allScreens().size(), int(Screen::Account) + 1);
    for (int i = 0; i < allScreens().size(); ++i)
        QCOMPARE(int(allScreens().at(i).screen), i);
}

void ScreenTest::groupsTheSidebar()
{
    using S = Screen;
    const QList<std::pair<QString, QList<Screen>>> wanted = {
        {u"Overview"_s, {S::LibraryScore, S::Health, S::LibrarySafety, S::FixQueue}},
        {u"Repair"_s, {S::Duplicates, S::Missing, S::Cues, S::Versions, S::TrackId}},
        {u"Prep"_s, {S::GigCheck, S::GigRun, S::Loudness, S::Stems, S::Hygiene}},
        {u"Play"_s,
         {S::Suggestions, S::Signal, S::Transitions, S::Debrief, S::Booth, S::Community}},
        {u"Automate"_s, {S::Watch}},
        {u"Export"_s, {S::ChangeLog, S::Export}},
        {u"Account"_s, {S::Account}},
    };
    QCOMPARE(Nav::groups().size(), wanted.size());
    for (int i = 0; i < wanted.size(); ++i) {
        QCOMPARE(Nav::groups().at(i).title, wanted.at(i).first);
        QCOMPARE(Nav::groups().at(i).screens, wanted.at(i).second);
    }
}

void ScreenTest::makesTheGroupsOnce()
{
    const QUuid id = Nav::groups().first().id;
    QVERIFY(!id.isNull());
    QCOMPARE(Nav::groups().first().id, id);
    QVERIFY(Nav::groups().at(1).id != id);
}

QTEST_GUILESS_MAIN(ScreenTest)
#include "screen_test.moc"
