// The operations over real HTTP, against a server that says what the test wrote down. Against a
// server with a pool: signal_commands_test.

#include "signal/signal_client.h"

#include "platform/http.h"
#include "support/scripted_server.h"

#include <QTest>

using namespace std::chrono_literals;
using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

/// One of the operations, with what became of it in one text.
struct Operation
{
    const char *name;
    QByteArray line;       ///< of its request
    QByteArray goodAnswer; ///< a body
    QString goodOutcome;
    QString (*run)(const SignalConfig &config);
};

template <typename T>
QString outcomeOf(const SignalResult<T> &result, QString (*tell)(const T &))
{
    return result ? tell(*result) : result.error().message();
}

QString tellNumber(const qint64 &number)
{
    return QString::number(number);
}

const PlayEvent onePlay = {u"key"_s, u"T"_s, u"A"_s, u"House"_s, u"2026-11-16"_s, u"/secret"_s};

const Operation operations[] = {
    {"stats", "GET /stats HTTP/1.1", R"({"djs":1,"plays":2,"tracks":3})", u"1 2 3"_s,
     [](const SignalConfig &config) {
         return outcomeOf<SignalClient::PoolStats>(
             SignalClient::stats(config), [](const auto &stats) {
                 return u"%1 %2 %3"_s.arg(stats.djs).arg(stats.plays).arg(stats.tracks);
             });
     }},
    {"landing", "GET /landing?window=30&lane=House HTTP/1.1",
     R"({"min_djs":5,"tracks":[{"track_key":"b","djs":1,"plays":1},{"track_key":"a","djs":9,"plays":9}]})",
     u"b a"_s,
     [](const SignalConfig &config) {
         return outcomeOf<QList<LandingTrack>>(
             SignalClient::landing(config, 30, u"House"_s, std::nullopt), [](const auto &tracks) {
                 QStringList keys;
                 for (const LandingTrack &track : tracks)
                     keys << track.trackKey;
                 return keys.join(u' ');
             });
     }},
    {"contribute", "POST /events HTTP/1.1", R"({"accepted":1,"you_feed":7})", u"7"_s,
     [](const SignalConfig &config) {
         return outcomeOf<qint64>(SignalClient::contribute(config, {&onePlay, 1}), tellNumber);
     }},
    {"leave", "POST /leave HTTP/1.1", R"({"deleted":4})", u"4"_s,
     [](const SignalConfig &config) {
         return outcomeOf<qint64>(SignalClient::leave(config), tellNumber);
     }},
};

QString ran(const Operation &operation, const SignalConfig &config)
{
    return whileServing([&] { return operation.run(config); });
}

} // namespace

class SignalClientTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<ScriptedServer>();
        m_config = {.serverUrl = m_server->url(), .djHash = u"DJ-1"_s, .city = u"Detroit"_s};
    }

    void asksAndReadsTheAnswer_data() { eachOperation(); }
    void asksAndReadsTheAnswer()
    {
        QFETCH(int, index);
        const Operation &operation = operations[index];
        m_config.apiKey = u" key "_s;
        m_server->answer(200, operation.goodAnswer);
        QCOMPARE(ran(operation, m_config), operation.goodOutcome);
        QCOMPARE(m_server->requests().size(), 1);
        QCOMPARE(m_server->firstLine(), operation.line);
        QCOMPARE(m_server->header("X-API-Key"), QByteArray("key"));
        const bool isPost = operation.line.startsWith("POST");
        QCOMPARE(m_server->header("Content-Type").value_or("none"),
                 QByteArray(isPost ? "application/json" : "none"));
    }

    void failsWithWhatWentWrong_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("message");
        for (int index = 0; index < int(std::size(operations)); ++index) {
            const auto row = [index](int status, const QString &message) {
                QTest::addRow("%s: %d", operations[index].name, status)
                    << index << status << message;
            };
            row(401, u"Access key required or incorrect — check the key your crew gave you."_s);
            row(429, u"Too many requests — give it a moment."_s);
            row(500, u"Server returned 500."_s);
            row(404, u"Server returned 404."_s);
            row(201, u"Server returned 201."_s);
            row(204, u"Server returned 204."_s);
        }
    }
    void failsWithWhatWentWrong()
    {
        QFETCH(int, index);
        QFETCH(int, status);
        // Not even a good body helps.
        m_server->answer(status, status == 204 ? QByteArray() : operations[index].goodAnswer);
        QTEST(ran(operations[index], m_config), "message");
        QCOMPARE(m_server->requests().size(), 1);
    }

    void asksNoOneWithoutAServer_data() { eachOperation(); }
    void asksNoOneWithoutAServer()
    {
        QFETCH(int, index);
        m_config.serverUrl = u"  "_s;
        QCOMPARE(ran(operations[index], m_config), u"Set your Signal server URL first."_s);
    }

    void failsWhereNoOneListens_data() { eachOperation(); }
    void failsWhereNoOneListens()
    {
        QFETCH(int, index);
        m_server->stopListening();
        QCOMPARE(ran(operations[index], m_config),
                 u"Couldn't reach the server: Connection refused"_s);
    }

    void failsWhereTheServerNeverAnswers_data() { eachOperation(); }
    void failsWhereTheServerNeverAnswers()
    {
        QFETCH(int, index);
        const platform::ScopedHttpPatience little(300ms);
        m_server->keepSilent();
        QCOMPARE(ran(operations[index], m_config),
                 u"Couldn't reach the server: The request timed out."_s);
    }

    void failsWhereTheServerStopsHalfWay_data() { eachOperation(); }
    void failsWhereTheServerStopsHalfWay()
    {
        QFETCH(int, index);
        const QByteArray whole = ScriptedServer::message(200, operations[index].goodAnswer);
        m_server->answer(whole.chopped(5));
        QCOMPARE(ran(operations[index], m_config),
                 u"Couldn't reach the server: Connection closed"_s);
    }

    void goesNowhereElseWithTheKey_data() { eachOperation(); }
    void goesNowhereElseWithTheKey()
    {
        QFETCH(int, index);
        ScriptedServer other;
        other.answer(200, operations[index].goodAnswer);
        m_config.apiKey = u"secret"_s;
        m_server->answer(301, {}, {"Location: " + other.url().toUtf8() + "/"});
        QCOMPARE(ran(operations[index], m_config), u"Server returned 301."_s);
        QCOMPARE(other.requests().size(), 0);
    }

    void goesWhereItsOwnServerSends()
    {
        m_server->answer(308, {}, {"Location: /v2/stats"});
        m_server->answer(200, operations[0].goodAnswer);
        QCOMPARE(ran(operations[0], m_config), operations[0].goodOutcome);
        QCOMPARE(m_server->firstLine(1), QByteArray("GET /v2/stats HTTP/1.1"));
    }

    void refusesAnAnswerThatIsNone_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QByteArray>("body");
        for (int index = 0; index < 3; ++index) {
            for (const QByteArray body : {"", "{}", "[]", "null", "<html>", "{\"djs\":"})
                QTest::addRow("%s: %s", operations[index].name, body.constData()) << index << body;
        }
    }
    void refusesAnAnswerThatIsNone()
    {
        QFETCH(int, index);
        QFETCH(QByteArray, body);
        m_server->answer(200, body);
        QCOMPARE(ran(operations[index], m_config), u"The server's answer couldn't be read."_s);
    }

    void hasLeftWhateverTheBodySays_data()
    {
        QTest::addColumn<QByteArray>("body");
        for (const QByteArray body : {"", "{}", "[]", "<html>", "{\"deleted\":\"4\"}"})
            QTest::addRow("%s", body.constData()) << body;
    }
    void hasLeftWhateverTheBodySays()
    {
        QFETCH(QByteArray, body);
        m_server->answer(200, body);
        QCOMPARE(ran(operations[3], m_config), u"0"_s);
    }

    void cutsOffAnAnswerThatNeverEnds()
    {
        const QByteArray rows =
            QByteArray(R"({"track_key":"k","djs":1,"plays":1},)").repeated(600'000);
        m_server->answer(200, R"({"min_djs":5,"tracks":[)" + rows.chopped(1) + "]}");
        QCOMPARE(ran(operations[1], m_config),
                 u"Couldn't reach the server: The server's answer is too large."_s);
    }

    void tellsWhetherAServerIsWell_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("isWell");
        QTest::newRow("200") << 200 << true;
        QTest::newRow("204") << 204 << false;
        QTest::newRow("401") << 401 << false;
        QTest::newRow("500") << 500 << false;
    }
    void tellsWhetherAServerIsWell()
    {
        QFETCH(int, status);
        m_config.apiKey = u"key"_s;
        m_server->answer(status, status == 204 ? QByteArray() : QByteArray("fine"));
        QTEST(isWell(), "isWell");
        QCOMPARE(m_server->firstLine(), QByteArray("GET /health HTTP/1.1"));
        QCOMPARE(m_server->header("X-API-Key"), QByteArray("key"));
    }

    void callsAServerUnwellThatCannotBeReached()
    {
        m_server->stopListening();
        QVERIFY(!isWell());
        m_config.serverUrl.clear();
        QVERIFY(!isWell());
    }

    void sendsNothingButWhatTheCommunityMayKnow()
    {
        m_config.apiKey = u"key"_s;
        m_server->answer(200, R"({"accepted":1,"you_feed":1})");
        QCOMPARE(ran(operations[2], m_config), u"1"_s);
        QCOMPARE(
            m_server->headerNames(),
            (QByteArrayList{"Accept-Encoding", "Accept-Language", "Connection", "Content-Length",
                            "Content-Type", "Host", "User-Agent", "X-API-Key"}));
        QCOMPARE(m_server->body(),
                 QByteArray(R"({"dj_hash":"DJ-1","events":[{"track_key":"key","title":"T",)"
                            R"("artist":"A","lane":"House","city_bucket":"Detroit",)"
                            R"("week":"2026-11-16"}]})"));
    }

private:
    static void eachOperation()
    {
        QTest::addColumn<int>("index");
        for (int index = 0; index < int(std::size(operations)); ++index)
            QTest::newRow(operations[index].name) << index;
    }

    bool isWell() const
    {
        return whileServing([&] { return SignalClient::health(m_config); });
    }

    std::unique_ptr<ScriptedServer> m_server;
    SignalConfig m_config;
};

QTEST_GUILESS_MAIN(SignalClientTest)
#include "signal_client_test.moc"
