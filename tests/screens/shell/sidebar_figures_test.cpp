#include "screens/shell/sidebar_figures.h"

#include "support/track_builder.h"

#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QString none = u"none"_s;

/// Three copies of one track, one missing track, two tracks without a genre; all else in order.
Derived worn()
{
    return Derived(scanOf({
        onDisk(u"Ash"_s, u"Dawn"_s).genre(u"House"_s).bytes(3'000'000),
        onDisk(u"Ash"_s, u"Dawn"_s).genre(u"House"_s).bytes(2'000'000),
        onDisk(u"Ash"_s, u"Dawn"_s).bytes(1'000'000),
        onDisk(u"Bo"_s, u"Ebb"_s).genre(u"House"_s).bytes(4'000'000),
        lost(u"Cy"_s, u"Flow"_s),
    }));
}

Derived clean()
{
    return Derived(scanOf({onDisk(u"Ash"_s, u"Dawn"_s)
                               .genre(u"House"_s)
                               .key(u"8A"_s)
                               .bpm(u"124"_s)
                               .tagsRead()
                               .grid()
                               .gain()}));
}

QString badge(const QString &screen, const Derived *derived, int changes = 0)
{
    return SidebarFigures::sidebarCount(*screenFromRawValue(screen), derived, changes)
        .value_or(none);
}

} // namespace

class SidebarFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsWhatIsToBeDone_data();
    void countsWhatIsToBeDone();
    void countsTheChanges();
    void countsNothingWithoutALibrary();
    void everyOtherScreenHasNoBadge();
    void addsTheLibraryUp();
};

void SidebarFiguresTest::countsWhatIsToBeDone_data()
{
    QTest::addColumn<QString>("inWorn");
    QTest::addColumn<QString>("inClean");
    QTest::newRow("libraryScore") << QString::number(worn().score) << u"100"_s;
    QTest::newRow("health") << u"3m"_s << u"1m"_s;
    QTest::newRow("fixQueue") << u"3"_s << u"0"_s;
    QTest::newRow("duplicates") << u"1"_s << none;
    QTest::newRow("missing") << u"1"_s << none;
    QTest::newRow("trackID") << u"2"_s << none;
}

void SidebarFiguresTest::countsWhatIsToBeDone()
{
    const QString screen = QString::fromLatin1(QTest::currentDataTag());
    const Derived wornLibrary = worn();
    const Derived cleanLibrary = clean();
    QTEST(badge(screen, &wornLibrary), "inWorn");
    QTEST(badge(screen, &cleanLibrary), "inClean");
}

void SidebarFiguresTest::countsTheChanges()
{
    const Derived library = clean();
    QCOMPARE(badge(u"changeLog"_s, &library, 0), none);
    QCOMPARE(badge(u"changeLog"_s, &library, 1), u"1"_s);
    QCOMPARE(badge(u"changeLog"_s, &library, 240), u"240"_s);
}

void SidebarFiguresTest::countsNothingWithoutALibrary()
{
    for (const ScreenInfo &info : allScreens())
        QCOMPARE(badge(info.rawValue, nullptr, 9), none);
}

void SidebarFiguresTest::everyOtherScreenHasNoBadge()
{
    const Derived library = worn();
    const QStringList counted = {u"libraryScore"_s, u"health"_s,  u"fixQueue"_s, u"duplicates"_s,
                                 u"missing"_s,      u"trackID"_s, u"changeLog"_s};
    for (const ScreenInfo &info : allScreens()) {
        if (!counted.contains(info.rawValue))
            QCOMPARE(badge(info.rawValue, &library, 9), none);
    }
}

void SidebarFiguresTest::addsTheLibraryUp()
{
    const SidebarFigures::Totals expected = {u"5"_s, u"10 MB"_s, u"3 MB"_s};
    QCOMPARE(SidebarFigures::totalsOf(worn()), expected);
    const SidebarFigures::Totals nothing = {u"0"_s, u"0 MB"_s, u"0 MB"_s};
    QCOMPARE(SidebarFigures::totalsOf(Derived(scanOf({}))), nothing);
}

QTEST_APPLESS_MAIN(SidebarFiguresTest)
#include "sidebar_figures_test.moc"
