#include "screens/safety/library_safety_figures.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

using SeratoLibrary::Location;

class LibrarySafetyFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLibraryStandsByTheFirstRuleThatFits_data()
    {
        QTest::addColumn<bool>("online");
        QTest::addColumn<bool>("database");
        QTest::addColumn<bool>("loaded");
        QTest::addColumn<QString>("shown");
        QTest::newRow("offline") << false << true << true
                                 << u"internaldrive: Offline — reconnect the drive"_s;
        QTest::newRow("empty") << true << false << true
                               << u"questionmark.folder: No Serato database here"_s;
        QTest::newRow("loaded") << true << true << true
                                << u"checkmark.circle.fill: Loaded and scanned"_s;
        QTest::newRow("other") << true << true << false << u"internaldrive.fill: Ready to scan"_s;
    }
    void aLibraryStandsByTheFirstRuleThatFits()
    {
        QFETCH(const bool, online);
        QFETCH(const bool, database);
        QFETCH(const bool, loaded);
        const Location location{u"Stick"_s, QUrl::fromLocalFile(u"/a/_Serato_"_s), online,
                                database};
        const Location other{u"Disk"_s, QUrl::fromLocalFile(u"/b/_Serato_"_s), true, true};
        const auto state = LibrarySafetyFigures::stateOf(location, loaded ? location : other);
        QTEST(QString(LibrarySafetyFigures::symbolOf(state) + u": "_s +
                      LibrarySafetyFigures::textOf(state)),
              "shown");
    }

    void aStepIsDoneByWhatItAsksFor()
    {
        const auto done = [](const LibrarySafetyFigures::Standing &standing) {
            QString marks;
            for (qsizetype step = 0; step < 5; ++step)
                marks += LibrarySafetyFigures::isDone(step, standing) ? u'x' : u'-';
            return marks;
        };
        QCOMPARE(done({}), u"-x--x"_s);
        QCOMPARE(done({.seratoRunning = true}), u"----x"_s);
        QCOMPARE(done({.hasFigures = true, .hasResult = true}), u"xxx-x"_s);
        QCOMPARE(done({.hasSnapshot = true}), u"-x-xx"_s);
    }
};

QTEST_APPLESS_MAIN(LibrarySafetyFiguresTest)
#include "library_safety_figures_test.moc"
