// Sizes, places and colours of the window as a whole. Those of its parts have tests of their own.

#include "support/screen_look.h"
#include "support/window_fixture.h"

#include <QQuickItem>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

const QColor accent(u"#ec3013"_s);
const QColor ink(u"#201e1d"_s);
const QColor neutral200(u"#eae7e7"_s);

QColor faded(QColor color, float opacity)
{
    color.setAlphaF(opacity);
    return color;
}

/// All that is visible of this size and colour, in drawing order.
QList<QQuickItem *> shapes(QQuickItem *root, const QSizeF &size, const QColor &color)
{
    return itemsWhere(root, [&](const QQuickItem *item) {
        return item->size() == size && colorOf(item) == color.name(QColor::HexArgb);
    });
}

} // namespace

class LookTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnAnyWarning();
        m_fixture = std::make_unique<WindowFixture>();
        const QString there = m_fixture->writeAudio(u"Music/dawn.mp3"_s);
        m_fixture->writeHomeDatabase(
            {trackRecord({textRecord("pfil", there), textRecord("tsng", u"Dawn")}),
             trackRecord({textRecord("pfil", u"nowhere/ebb.mp3"), textRecord("tsng", u"Ebb")})});
    }
    void cleanup() { m_fixture.reset(); }

    void sheetLiesOnTheDesk();
    void sidebarIsOfOneWidth();
    void sidebarBearsTheMarkAndTheAvatar();
    void selectedRowIsWhiteOnTheAccent();
    void rowThatLeadsNowhereYetIsHalfThere();
    void libraryRowShowsItsDrive();
    void dimensionsHaveBarsOfTheirScores();
    void toastStandsAboveTheEdge();

private:
    QList<QQuickItem *> shapesOf(const QSizeF &size, const QColor &color) const
    {
        return shapes(m_fixture->content(), size, color);
    }
    QQuickItem *part(const QString &row, const char *name) const
    {
        return m_fixture->button(row)->property(name).value<QQuickItem *>();
    }

    std::unique_ptr<WindowFixture> m_fixture;
};

void LookTest::sheetLiesOnTheDesk()
{
    m_fixture->open(AppState::Environment::Ignored, {1440, 900});
    QCOMPARE(shapesOf({1440, 900}, u"#e7e6e6"_s).size(), 1);
    const auto sheets = shapesOf({1412, 872}, u"#f3f2f2"_s);
    QCOMPARE(sheets.size(), 1);
    QCOMPARE(sheets.first()->property("radius").toDouble(), 16.0);
}

void LookTest::sidebarIsOfOneWidth()
{
    for (const QSize &size : {QSize(1120, 720), QSize(1440, 900)}) {
        m_fixture->open(AppState::Environment::Ignored, size);
        const double height = size.height() == 720 ? 720 : 872;
        const auto sidebars = shapesOf({238, height}, u"#eeedec"_s);
        const auto rules = shapesOf({1, height}, faded(ink, 0.09F));
        QCOMPARE(sidebars.size(), 1);
        QCOMPARE(rules.size(), 1);
        QCOMPARE(placeOf(rules.first()).left(), placeOf(sidebars.first()).right());
    }
}

void LookTest::sidebarBearsTheMarkAndTheAvatar()
{
    m_fixture->open();
    const auto tiles = shapesOf({26, 26}, accent);
    QCOMPARE(tiles.size(), 1);
    QVERIFY(iconOf(tiles.first(), u"cross.case.fill"_s));
    const auto avatars = shapesOf({30, 30}, u"#d7d3d3"_s);
    QCOMPARE(avatars.size(), 1);
    QCOMPARE(avatars.first()->property("radius").toDouble(), 15.0);
    QVERIFY(iconOf(avatars.first(), u"person.fill"_s));
    QVERIFY(iconOf(m_fixture->button(u"Rescan"_s), u"arrow.clockwise"_s));
}

void LookTest::selectedRowIsWhiteOnTheAccent()
{
    m_fixture->open();
    QQuickItem *selected = iconOf(part(u"Library score"_s, "contentItem"), u"gauge.medium"_s);
    QQuickItem *other = iconOf(part(u"Health"_s, "contentItem"), u"heart.text.square"_s);
    QVERIFY(selected && other);
    QCOMPARE(selected->size(), QSizeF(16, 16));
    QCOMPARE(colorOf(selected), QColor(Qt::white).name(QColor::HexArgb));
    QCOMPARE(colorOf(other), faded(ink, 0.62F).name(QColor::HexArgb));
    QCOMPARE(colorOf(part(u"Library score"_s, "background")), accent.name(QColor::HexArgb));
    QCOMPARE(part(u"Health"_s, "background")->property("color").value<QColor>().alpha(), 0);
    m_fixture->app().setSelection(Screen::Health);
    QTRY_COMPARE(colorOf(part(u"Health"_s, "background")), accent.name(QColor::HexArgb));
    QCOMPARE(colorOf(other), QColor(Qt::white).name(QColor::HexArgb));
}

void LookTest::rowThatLeadsNowhereYetIsHalfThere()
{
    m_fixture->open();
    QCOMPARE(part(u"Stems"_s, "contentItem")->opacity(), 0.5);
    m_fixture->app().setSelection(Screen::Stems);
    QTRY_COMPARE(colorOf(part(u"Stems"_s, "background")), accent.name(QColor::HexArgb));
    QCOMPARE(part(u"Stems"_s, "background")->opacity(), 0.5);
    // White stays white: half of it over the sidebar can't be told from it.
    QCOMPARE(part(u"Stems"_s, "contentItem")->opacity(), 1.0);
}

void LookTest::libraryRowShowsItsDrive()
{
    m_fixture->open();
    const QQuickItem *drive = iconOf(m_fixture->content(), u"internaldrive.fill"_s);
    QVERIFY(drive);
    QCOMPARE(drive->size(), QSizeF(26, 26));
    QCOMPARE(colorOf(drive), ink.name(QColor::HexArgb));
    QVERIFY(iconOf(m_fixture->button(u"Scan"_s), u"magnifyingglass"_s));
}

void LookTest::dimensionsHaveBarsOfTheirScores()
{
    m_fixture->openAndScan();
    QTRY_COMPARE(shapesOf({120, 7}, neutral200).size(), 6);
    const auto bars = shapesOf({120, 7}, neutral200);
    const auto dimensions = m_fixture->app().derived()->dimensions;
    for (qsizetype i = 0; i < bars.size(); ++i) {
        const QQuickItem *filled = bars[i]->childItems().first();
        const int score = dimensions[i].score;
        QCOMPARE(filled->width(), 120.0 * score / 100);
        const QString tint = score >= 80   ? u"#ff2f7d55"_s
                             : score >= 55 ? u"#ffb07d10"_s
                                           : u"#ffec3013"_s;
        QCOMPARE(colorOf(filled), tint);
    }
}

void LookTest::toastStandsAboveTheEdge()
{
    m_fixture->open();
    m_fixture->app().showToast(u"Done."_s, Reversible::Yes);
    QQuickItem *bar = nullptr;
    QTRY_VERIFY((bar = itemNamed(m_fixture->content(), u"Done."_s, QAccessible::AlertMessage)) !=
                nullptr);
    QCOMPARE(placeOf(bar).bottom(), 720.0 - 18);
    QCOMPARE(colorOf(bar), ink.name(QColor::HexArgb));
    const QQuickItem *mark = iconOf(bar, u"checkmark.circle.fill"_s);
    QVERIFY(mark);
    QCOMPARE(colorOf(mark), u"#ffe15b47"_s);
    QCOMPARE(placeOf(mark).left() - placeOf(bar).left(), 16.0);
}

QTEST_MAIN(LookTest)
#include "look_test.moc"
