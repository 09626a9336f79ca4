#include "screens/components/long_run.h"

#include "support/qml_fixture.h"

#include <QGuiApplication>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

constexpr auto twoButtons = R"(
Column {
    id: root
    property string done
    PrimaryButton {
        id: one
        objectName: "one"
        title: "One"
        onClicked: LongRun.start(one, () => root.done += "1")
    }
    PrimaryButton {
        id: two
        objectName: "two"
        title: "Two"
        onClicked: LongRun.start(two, () => root.done += "2")
    }
})";

bool isDown(QQuickItem *button)
{
    return button->property("down").toBool();
}

} // namespace

class LongRunTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnAnyWarning(); }

    void showsThePressAheadOfTheWork()
    {
        QmlScene scene(twoButtons);
        QQuickItem *button = scene.item(u"one"_s);
        bool downOnAPicture = false;
        const QObject onlooker;
        connect(
            scene.window(), &QQuickWindow::afterRendering, &onlooker,
            [&] { downOnAPicture |= isDown(button) && scene.value("done").toString().isEmpty(); },
            Qt::DirectConnection);
        QVERIFY(pressByPointer(button));
        QVERIFY(isDown(button));
        QVERIFY(QGuiApplication::overrideCursor());
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        QTRY_COMPARE(scene.value("done"), u"1"_s);
        QVERIFY(downOnAPicture);
        QVERIFY(!isDown(button));
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void aSecondPressOfTheSameButtonCountsOnce()
    {
        QmlScene scene(twoButtons);
        pressByScreenReader(scene.item(u"one"_s));
        pressByScreenReader(scene.item(u"one"_s));
        pressByScreenReader(scene.item(u"two"_s));
        QTRY_COMPARE(scene.value("done"), u"12"_s);
        QTest::qWait(20);
        QCOMPARE(scene.value("done"), u"12"_s);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void worksInAWindowThatIsNotShown()
    {
        QmlScene scene(twoButtons);
        scene.window()->hide();
        pressByScreenReader(scene.item(u"one"_s));
        QMetaObject::invokeMethod(scene.item(u"one"_s), "press");
        QTRY_COMPARE(scene.value("done"), u"1"_s);
    }
};

QTEST_MAIN(LongRunTest)
#include "long_run_test.moc"
