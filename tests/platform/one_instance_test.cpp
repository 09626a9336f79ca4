#include "platform/one_instance.h"

#include "support/scoped_environment.h"
#include "support/test_folder.h"

#include <QElapsedTimer>
#include <QTest>

#include <future>
#include <thread>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using platform::OneInstance;

Q_DECLARE_METATYPE(platform::OneInstance::Role)

namespace {

const QString scope = u"/home/dj/.local/share/Tarnwick"_s;

/// A start beside those of this thread.
std::future<OneInstance::Role> startElsewhere(std::chrono::milliseconds patience = 20s)
{
    return std::async(std::launch::async, [=] { return OneInstance(scope, patience).role(); });
}

bool isSettled(const std::future<OneInstance::Role> &start)
{
    return start.wait_for(0s) == std::future_status::ready;
}

} // namespace

class OneInstanceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<TestFolder>();
        m_runtime = std::make_unique<ScopedVariable>("XDG_RUNTIME_DIR", m_folder->path().toUtf8());
        m_token = std::make_unique<ScopedVariable>("XDG_ACTIVATION_TOKEN");
    }
    void cleanup()
    {
        m_token.reset();
        m_runtime.reset();
        m_folder.reset();
    }

    void theFirstStartIsTheFirst()
    {
        const OneInstance first(scope);
        QCOMPARE(first.role(), OneInstance::Role::First);
    }

    void aLaterStartCallsTheFirstAndHandsOver()
    {
        OneInstance first(scope);
        int calls = 0;
        first.answer([&] { ++calls; });
        auto second = startElsewhere();
        QTRY_VERIFY(isSettled(second));
        QCOMPARE(second.get(), OneInstance::Role::HandedOver);
        QVERIFY(calls >= 1);
        calls = 0;
        auto third = startElsewhere();
        QTRY_VERIFY(isSettled(third));
        QCOMPARE(third.get(), OneInstance::Role::HandedOver);
        QVERIFY(calls >= 1);
    }

    void aStartAheadOfTheFirstsEventLoopIsAnsweredOnceItRuns()
    {
        OneInstance first(scope);
        auto second = startElsewhere();
        std::this_thread::sleep_for(250ms);
        QVERIFY(!isSettled(second));
        int calls = 0;
        first.answer([&] { ++calls; });
        QTRY_VERIFY(isSettled(second));
        QCOMPARE(second.get(), OneInstance::Role::HandedOver);
        QTRY_VERIFY(calls >= 1);
    }

    void theTokenOfALaterStartStandsInTheEnvironment_data()
    {
        QTest::addColumn<QByteArray>("token");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("none") << QByteArray() << QByteArray();
        QTest::newRow("as desktops write it") << "kwin-17"_ba
                                              << "kwin-17"_ba;
        QTest::newRow("longer than any") << QByteArray(3000, 'x') << QByteArray(1023, 'x');
    }
    void theTokenOfALaterStartStandsInTheEnvironment()
    {
        QFETCH(QByteArray, token);
        QFETCH(QByteArray, expected);
        OneInstance first(scope);
        QByteArray seen = "not called";
        first.answer([&] { seen = qgetenv("XDG_ACTIVATION_TOKEN"); });
        if (!token.isEmpty())
            qputenv("XDG_ACTIVATION_TOKEN", token);
        auto second = startElsewhere();
        QTRY_VERIFY(isSettled(second));
        QCOMPARE(seen, expected);
    }

    void anotherScopeHasAFirstOfItsOwn()
    {
        const OneInstance first(scope);
        const OneInstance other(u"/home/dj/elsewhere"_s);
        QCOMPARE(other.role(), OneInstance::Role::First);
    }

    void aLaterStartWithoutAnAnswerGivesUp()
    {
        const OneInstance first(scope);
        const OneInstance second(scope, 150ms);
        QCOMPARE(second.role(), OneInstance::Role::Unanswered);
    }

    void aLaterStartTakesThePlaceOfOneThatEnds()
    {
        std::optional<OneInstance> first(scope);
        auto second = startElsewhere();
        std::this_thread::sleep_for(150ms);
        QVERIFY(!isSettled(second));
        first.reset();
        QTRY_VERIFY(isSettled(second));
        QCOMPARE(second.get(), OneInstance::Role::First);
    }

    void whoHasLeftIsNotCalled()
    {
        OneInstance first(scope);
        first.answer([] { QFAIL("called"); });
        first.leave();
        const OneInstance second(scope, 0ms);
        QCOMPARE(second.role(), OneInstance::Role::First);
    }

    void whatAKilledProcessLeavesIsNoHindrance()
    {
        {
            const OneInstance killed(scope);
            const QStringList left = m_folder->names();
            QCOMPARE(left.size(), 2);
            for (const QString &name : left)
                m_folder->write(u"kept/"_s + name);
        }
        for (const QString &name : m_folder->names(u"kept"_s))
            m_folder->write(name);
        OneInstance first(scope);
        first.answer([] {});
        auto second = startElsewhere();
        QTRY_VERIFY(isSettled(second));
        QCOMPARE(second.get(), OneInstance::Role::HandedOver);
    }

    void leavesNothingButTheEmptyFileOfItsLock()
    {
        {
            OneInstance first(scope);
            first.answer([] {});
            auto second = startElsewhere();
            QTRY_VERIFY(isSettled(second));
        }
        const QStringList left = m_folder->names();
        QCOMPARE(left.size(), 1);
        QVERIFY(left.first().endsWith(u".lock"_s));
        QCOMPARE(m_folder->read(left.first()), QByteArray());
    }

    void withoutARuntimeFolderEveryStartIsTheFirst_data()
    {
        QTest::addColumn<QByteArray>("folder");
        QTest::newRow("not set") << QByteArray();
        QTest::newRow("not there") << "/nowhere/at/all"_ba;
        QTest::newRow("relative") << "run"_ba;
    }
    void withoutARuntimeFolderEveryStartIsTheFirst()
    {
        QFETCH(QByteArray, folder);
        const ScopedVariable variable("XDG_RUNTIME_DIR", folder);
        OneInstance first(scope);
        first.answer([] {});
        const OneInstance second(scope);
        QCOMPARE(first.role(), OneInstance::Role::First);
        QCOMPARE(second.role(), OneInstance::Role::First);
    }

    void aPathTooLongForASocketStillKeepsToOne()
    {
        const QByteArray folder = m_folder->makeFolder(QString(120, u'l')).toUtf8();
        const ScopedVariable variable("XDG_RUNTIME_DIR", folder);
        OneInstance first(scope);
        first.answer([] {});
        const OneInstance second(scope, 100ms);
        QCOMPARE(second.role(), OneInstance::Role::Unanswered);
    }

private:
    std::unique_ptr<TestFolder> m_folder;
    std::unique_ptr<ScopedVariable> m_runtime;
    std::unique_ptr<ScopedVariable> m_token;
};

QTEST_GUILESS_MAIN(OneInstanceTest)
#include "one_instance_test.moc"
