// Whether every text can be told from the ground on which it stands.

#include "support/contrast.h"
#include "support/demo_window.h"
#include "support/screen_look.h"

#include <QImage>
#include <QQmlComponent>
#include <QScreen>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

/// From this size on a text is large.
constexpr double largeSize = 18;
constexpr double least = 4.5;
constexpr double leastOfLarge = 3;

QColor ink(double opacity)
{
    QColor color(0x20, 0x1e, 0x1d);
    color.setAlphaF(float(opacity));
    return color;
}

const QColor card(0xff, 0xff, 0xff);
const QColor sidebar(0xee, 0xed, 0xec);
const QColor neutral200(0xea, 0xe7, 0xe7);
const QColor neutral400(0xba, 0xb6, 0xb6);
const QColor neutral500(0x9b, 0x97, 0x97);
const QColor accent(0xec, 0x30, 0x13);
const QColor accent100(0xff, 0xf2, 0xef);
const QColor good(0x2f, 0x7d, 0x55);
const QColor warn(0xb0, 0x7d, 0x10);
const QColor white(Qt::white);

/// What stays paler than it should be, since the design gives both its colours.
struct Pale
{
    const char *what;
    QColor text;
    QColor ground;
    double ratio;
};

QList<Pale> allPale()
{
    return {
        {"small labels, and the second line of a track", ink(0.42), card, 2.59},
        {"labels of the sidebar's figures and groups", ink(0.42), sidebar, 2.52},
        {"what the chosen target of an export is", ink(0.42), accent100, 2.55},
        {"the kind of an issue", ink(0.62), neutral200, 4.34},
        {"a screen that isn't built yet, half there", ink(0.5), sidebar, 3.12},
        {"the same while it is selected", white, over(accent, sidebar, 0.5), 2.38},
        {"a fix that is safe, on a tenth of its colour", good, over(good, card, 0.1), 4.40},
        {"a fix that is the user's call, likewise", warn, over(warn, card, 0.1), 3.25},
        {"a figure that needs attention", warn, card, 3.63},
        {"a figure that is a problem", accent, card, 4.20},
        {"a rank, what is dropped, what is offline", neutral500, card, 2.89},
        {"the first thing to do, and the selected screen", white, accent, 4.20},
        {"a button that can't be pressed", white, neutral400, 2.01},
        {"another button that can't be pressed", neutral400, card, 2.01},
    };
}

/// The same but for what rounding makes of them.
bool isLike(const QColor &one, const QColor &other)
{
    const auto near = [](int a, int b) { return std::abs(a - b) <= 1; };
    return near(one.red(), other.red()) && near(one.green(), other.green()) &&
           near(one.blue(), other.blue());
}

bool isKnown(const QColor &shown, const QColor &ground)
{
    const auto all = allPale();
    return std::any_of(all.begin(), all.end(), [&](const Pale &pale) {
        return isLike(pale.ground, ground) && isLike(over(pale.text, ground), shown);
    });
}

bool isText(const QQuickItem *item)
{
    return item->inherits("QQuickText") || item->inherits("QQuickTextInput") ||
           item->inherits("tarnwick::TabularText");
}

/// How much of an item's own colour is there, with all that it stands in.
double presenceOf(const QQuickItem *item)
{
    double presence = 1;
    for (; item; item = item->parentItem())
        presence *= item->opacity();
    return presence;
}

/// What of an item can be seen, in the scene.
QRectF seenOf(const QQuickItem *item)
{
    QRectF seen = item->mapRectToScene(item->boundingRect());
    for (const QQuickItem *around = item->parentItem(); around; around = around->parentItem()) {
        if (around->clip())
            seen &= around->mapRectToScene(around->boundingRect());
    }
    return seen & QRectF(QPointF(), item->window()->size());
}

/// The commonest colour along a line close around a text, where no letter reaches.
QColor groundIn(const QImage &picture, const QRect &text)
{
    const QRect place = text.adjusted(-1, -1, 1, 1) & picture.rect();
    QMap<QRgb, int> counts;
    for (int x = place.left(); x <= place.right(); ++x) {
        ++counts[picture.pixel(x, place.top())];
        ++counts[picture.pixel(x, place.bottom())];
    }
    for (int y = place.top(); y <= place.bottom(); ++y) {
        ++counts[picture.pixel(place.left(), y)];
        ++counts[picture.pixel(place.right(), y)];
    }
    return QColor(std::max_element(counts.begin(), counts.end()).key());
}

double sizeOf(const QQuickItem *text)
{
    constexpr double pointsPerInch = 72;
    return text->property("font").value<QFont>().pointSizeF() *
           text->window()->screen()->logicalDotsPerInchY() / pointsPerInch;
}

} // namespace

class ContrastTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnAnyWarning(); }
    void tokensCanBeReadWhereTheyAreUsed_data();
    void tokensCanBeReadWhereTheyAreUsed();
    void listOfWhatIsPaleIsTrue();
    void everyTextOfEveryScreenCanBeRead();

private:
    /// How many texts the window shows now; those that can't be read are added to m_pale.
    int look(DemoWindow &user, const QString &where);

    QStringList m_pale;
};

void ContrastTest::tokensCanBeReadWhereTheyAreUsed_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArrayList>("grounds");
    const auto add = [](const char *text, const QByteArrayList &grounds) {
        QTest::newRow(text) << QByteArray(text) << grounds;
    };
    add("ink", {"ground", "sidebar", "surface", "card", "neutral100", "neutral200", "neutral500",
                "accent100", "accent200", "warn"});
    add("inkSoft", {"ground", "card", "neutral100", "neutral200", "accent100"});
    add("inkFaint", {"card", "sidebar", "accent100"});
    add("neutral500", {"card"});
    add("neutral700", {"sidebar", "neutral200"});
    add("accent", {"card"});
    add("accent700", {"ground", "card", "accent100"});
    add("good", {"card"});
    add("warn", {"card"});
    add("onFill", {"accent", "accent600", "accent700", "ink", "good", "neutral400", "neutral700"});
    add("neutral400", {"ink", "card"});
}

void ContrastTest::tokensCanBeReadWhereTheyAreUsed()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArrayList, grounds);
    QmlScene scene("Item { readonly property QtObject theme: Theme }");
    const auto *theme = scene.value("theme").value<QObject *>();
    const auto token = [theme](const QByteArray &name) {
        return theme->property(name.constData()).value<QColor>();
    };
    for (const QByteArray &name : grounds) {
        const QColor ground = token(name);
        const QColor shown = over(token(text), ground);
        QVERIFY2(token(text).isValid() && ground.isValid(), name.constData());
        QVERIFY2(contrast(shown, ground) >= least || isKnown(shown, ground), name.constData());
    }
}

void ContrastTest::listOfWhatIsPaleIsTrue()
{
    for (const Pale &pale : allPale()) {
        const double ratio = contrast(over(pale.text, pale.ground), pale.ground);
        QVERIFY2(std::abs(ratio - pale.ratio) < 0.006 && ratio < least,
                 qPrintable(u"%1: %2"_s.arg(QLatin1StringView(pale.what)).arg(ratio)));
    }
}

int ContrastTest::look(DemoWindow &user, const QString &where)
{
    int seen = 0;
    const QImage picture = user.window()->grabWindow();
    for (const QQuickItem *text : shownWhere(user.content(), isText)) {
        const QString words = text->property("text").toString();
        const QRect place = seenOf(text).toAlignedRect() & picture.rect();
        if (words.isEmpty() || place.isEmpty())
            continue;
        ++seen;
        const QColor ground = groundIn(picture, place);
        const QColor shown =
            over(text->property("color").value<QColor>(), ground, presenceOf(text));
        const double ratio = contrast(shown, ground);
        if (ratio < (sizeOf(text) < largeSize ? least : leastOfLarge) && !isKnown(shown, ground))
            m_pale += u"%1: “%2” is %3 on %4, %5"_s.arg(where, words, colorOf(text), ground.name())
                          .arg(ratio, 0, 'f', 2);
    }
    return seen;
}

void ContrastTest::everyTextOfEveryScreenCanBeRead()
{
    m_pale.clear();
    DemoWindow user;
    user.open();
    QVERIFY(user.waitForPicture());
    QVERIFY(look(user, u"First run"_s) > 20);
    user.openAndScan();
    for (const ScreenInfo &screen : allScreens()) {
        QVERIFY(user.show(screen.screen));
        // The sidebar alone has more than thirty.
        QVERIFY2(look(user, screen.title) > 35, qPrintable(screen.title));
    }
    user.app().showToast(u"Done."_s, Reversible::Yes);
    QTRY_COMPARE(presenceOf(user.text(u"· reversible"_s)), 1.0);
    QVERIFY(user.waitForPicture());
    look(user, u"Toast"_s);
    QCOMPARE(m_pale.join(u'\n'), QString());
}

QTEST_MAIN(ContrastTest)
#include "contrast_test.moc"
