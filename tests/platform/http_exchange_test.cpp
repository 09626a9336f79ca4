// The module that talks HTTP, over real sockets of this machine.

#include "platform/http.h"

#include "support/scripted_server.h"

#include <QTest>

using namespace std::chrono_literals;
using namespace tarnwick;
using namespace tarnwick::platform;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

HttpRequest get(const ScriptedServer &server, const QString &path = u"/"_s)
{
    return {.url = QUrl(server.url() + path)};
}

HttpRequest post(const ScriptedServer &server, const QByteArray &body, const QString &path = u"/"_s)
{
    return {.method = HttpRequest::Method::Post,
            .url = QUrl(server.url() + path),
            .headers = {{"Content-Type", "application/json"}},
            .body = body};
}

Result<HttpReply> sent(const HttpRequest &request)
{
    return whileServing([&] { return sendHttp(request); });
}

QString reasonOf(const Result<HttpReply> &outcome)
{
    return outcome ? u"status %1"_s.arg(outcome->status) : outcome.error().message;
}

} // namespace

class HttpExchangeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_server = std::make_unique<ScriptedServer>(); }

    void getsAnAnswer()
    {
        m_server->answer(200, "hello");
        const auto reply = sent(get(*m_server, u"/some/path?a=b"_s));
        QVERIFY2(reply, qPrintable(reasonOf(reply)));
        QCOMPARE(reply->status, 200);
        QCOMPARE(reply->body, QByteArray("hello"));
        QCOMPARE(m_server->firstLine(), QByteArray("GET /some/path?a=b HTTP/1.1"));
    }

    void postsABodyAsItIs()
    {
        const QByteArray body = QByteArray(300'000, 'x') + QByteArray("\0\r\n\r\n", 5);
        m_server->answer(200);
        HttpRequest request = post(*m_server, body);
        request.headers.append(HttpHeader{"X-Some", "value"});
        QVERIFY(sent(request));
        QCOMPARE(m_server->firstLine(), QByteArray("POST / HTTP/1.1"));
        QCOMPARE(m_server->body(), body);
        QCOMPARE(m_server->header("Content-Type"), QByteArray("application/json"));
        QCOMPARE(m_server->header("X-Some"), QByteArray("value"));
    }

    void keepsAHeaderToOneLine()
    {
        m_server->answer(200);
        HttpRequest request = get(*m_server);
        request.headers.append(HttpHeader{"X-API-Key", "key\r\nX-Other: value\n"});
        QVERIFY(sent(request));
        QCOMPARE(m_server->header("X-API-Key"), QByteArray("keyX-Other: value"));
        QVERIFY(!m_server->header("X-Other"));
    }

    void saysNothingOfTheUserOrTheMachine()
    {
        m_server->answer(200);
        QVERIFY(sent(get(*m_server)));
        QCOMPARE(m_server->headerNames(), (QByteArrayList{"Accept-Encoding", "Accept-Language",
                                                          "Connection", "Host", "User-Agent"}));
        QCOMPARE(m_server->header("Accept-Language"), QByteArray("*"));
        QCOMPARE(m_server->header("User-Agent"), QByteArray("Tarnwick"));
    }

    void givesAnAnswerOfAnyStatus_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {200, 201, 204, 206, 307, 308, 300, 304, 400, 401, 403, 404,
                                 405, 407, 409, 410, 418, 429, 500, 501, 502, 503, 504, 599})
            QTest::addRow("%d", status) << status;
    }
    void givesAnAnswerOfAnyStatus()
    {
        QFETCH(int, status);
        const QByteArray body = status == 204 || status == 304 ? "" : "words";
        for (const auto &request : {get(*m_server), post(*m_server, "{}")}) {
            m_server->answer(status, body, {"WWW-Authenticate: Basic realm=\"x\""});
            const auto reply = sent(request);
            QVERIFY2(reply, qPrintable(reasonOf(reply)));
            QCOMPARE(reply->status, status);
            if (request.method == HttpRequest::Method::Get)
                QCOMPARE(reply->body, body);
        }
        QCOMPARE(m_server->requests().size(), 2);
    }

    void readsAnAnswerInChunks()
    {
        m_server->answer("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                         "5\r\nhello\r\n6\r\n world\r\n0\r\n\r\n");
        const auto reply = sent(get(*m_server));
        QVERIFY2(reply, qPrintable(reasonOf(reply)));
        QCOMPARE(reply->body, QByteArray("hello world"));
    }

    void readsAnAnswerThatEndsWithItsConnection()
    {
        m_server->answer("HTTP/1.1 200 OK\r\n\r\nhello");
        const auto reply = sent(get(*m_server));
        QVERIFY2(reply, qPrintable(reasonOf(reply)));
        QCOMPARE(reply->body, QByteArray("hello"));
    }

    void unpacksAnAnswer()
    {
        // "hello" as gzip has it.
        const QByteArray packed = QByteArray::fromHex("1f8b0800000000000003cb48cdc9c907"
                                                      "0086a6103605000000");
        m_server->answer(200, packed, {"Content-Encoding: gzip"});
        const auto reply = sent(get(*m_server));
        QVERIFY2(reply, qPrintable(reasonOf(reply)));
        QCOMPARE(reply->body, QByteArray("hello"));
    }

    void failsWhereNoOneListens()
    {
        m_server->stopListening();
        const auto reply = sent(get(*m_server));
        QVERIFY(!reply);
        QCOMPARE(reply.error().message, u"Connection refused"_s);
    }

    void failsWhereTheAddressIsNoneOfHttp_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("another scheme") << u"httpfoo://127.0.0.1/"_s;
        QTest::newRow("no such host") << u"http://no-such-host.invalid/"_s;
        QTest::newRow("no TLS there") << QString(m_server->url()).replace(u"http:"_s, u"https:"_s);
    }
    void failsWhereTheAddressIsNoneOfHttp()
    {
        QFETCH(QString, url);
        const auto reply = sent({.url = QUrl(url), .patience = 5s});
        QVERIFY(!reply);
        QVERIFY(!reply.error().message.isEmpty());
    }

    void failsWhereNoWholeAnswerComes_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const auto row = [](const char *name, const QByteArray &bytes) {
            QTest::newRow(name) << bytes;
        };
        row("nothing", "");
        row("half a status line", "HTTP/1.1 20");
        row("half the head", "HTTP/1.1 200 OK\r\nContent-Le");
        row("no body", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n");
        row("half the body", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"tracks\":[");
        row("half of the chunks",
            "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n");
        row("half a chunk", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhe");
        row("half the body of an error",
            "HTTP/1.1 500 Oh\r\nContent-Length: 100\r\n\r\n{\"tracks\":[");
        row("no HTTP at all", "220 mail.example ESMTP\r\n");
    }
    void failsWhereNoWholeAnswerComes()
    {
        QFETCH(QByteArray, bytes);
        // Qt asks once more where an answer hasn't begun.
        for (int i = 0; i < 4; ++i)
            m_server->answer(bytes);
        QCOMPARE(reasonOf(sent(get(*m_server))), u"Connection closed"_s);
        QCOMPARE(reasonOf(sent(post(*m_server, "{}"))), u"Connection closed"_s);
    }

    void failsWhereWhatIsPackedIsBad()
    {
        m_server->answer(200, "no gzip at all", {"Content-Encoding: gzip"});
        QVERIFY(!sent(get(*m_server)));
    }

    void postsOnceWhereTheServerClosesWithoutAnAnswer()
    {
        QCOMPARE(reasonOf(sent(post(*m_server, "{}"))), u"Connection closed"_s);
        QCOMPARE(m_server->requests().size(), 1);
    }

    void losesPatienceWithASilentServer_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("from the start") << QByteArray();
        QTest::newRow("in the head") << QByteArray("HTTP/1.1 200 OK\r\n");
        QTest::newRow("in the body")
            << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhe");
    }
    void losesPatienceWithASilentServer()
    {
        QFETCH(QByteArray, bytes);
        const ScopedHttpPatience little(300ms);
        m_server->answer(bytes, ScriptedServer::Afterwards::KeepOpen);
        QCOMPARE(reasonOf(sent(get(*m_server))), u"The request timed out."_s);
        QCOMPARE(m_server->requests().size(), 1);
    }

    void staysPatientWhileAnythingComes()
    {
        const ScopedHttpPatience little(1000ms);
        m_server->drip("HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\nslowly", 6, 400ms);
        const auto reply = sent(get(*m_server));
        QVERIFY2(reply, qPrintable(reasonOf(reply)));
        QCOMPARE(reply->body, QByteArray("slowly"));
    }

    void takesAnAnswerUpToItsLimit_data()
    {
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<int>("size");
        QTest::addColumn<QString>("outcome");
        const auto row = [](const char *name, const QByteArray &head, int size,
                            const QString &outcome) {
            QTest::newRow(name) << head << size << outcome;
        };
        const QByteArray ok = "HTTP/1.1 200 OK\r\n";
        const QString tooLarge = u"The server's answer is too large."_s;
        row("just so", ok + "Content-Length: 16000000\r\n\r\n", 16'000'000, u"status 200"_s);
        row("one byte more", ok + "Content-Length: 16000001\r\n\r\n", 16'000'001, tooLarge);
        row("without a length", ok + "\r\n", 20'000'000, tooLarge);
        row("an error", "HTTP/1.1 500 Oh\r\n\r\n", 20'000'000, tooLarge);
    }
    void takesAnAnswerUpToItsLimit()
    {
        QFETCH(QByteArray, head);
        QFETCH(int, size);
        m_server->answer(head + QByteArray(size, 'x'));
        QTEST(reasonOf(sent(get(*m_server))), "outcome");
    }

    void followsARedirectWithinTheOrigin_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("location");
        QTest::addColumn<QByteArray>("line");
        const auto row = [](const char *name, int status, const QString &location,
                            const QByteArray &line) {
            QTest::newRow(name) << status << location << line;
        };
        row("301", 301, u"/new?a=%20b"_s, "GET /new?a=%20b HTTP/1.1");
        row("302", 302, u"/new"_s, "GET /new HTTP/1.1");
        row("303", 303, u"/new"_s, "GET /new HTTP/1.1");
        row("307", 307, u"/new"_s, "POST /new HTTP/1.1");
        row("308", 308, u"/new"_s, "POST /new HTTP/1.1");
        row("the whole address", 308, m_server->url() + u"/whole"_s, "POST /whole HTTP/1.1");
        row("beside it", 308, u"other"_s, "POST /sub/other HTTP/1.1");
        row("in capitals", 308, QString(m_server->url()).replace(u"http"_s, u"HTTP"_s) + u"/x"_s,
            "POST /x HTTP/1.1");
    }
    void followsARedirectWithinTheOrigin()
    {
        QFETCH(int, status);
        QFETCH(QString, location);
        QFETCH(QByteArray, line);
        const QString place = location.startsWith(u"http"_s, Qt::CaseInsensitive)
                                  ? m_server->url() + QUrl(location).path()
                                  : location;
        m_server->answer(status, "moved", {"Location: " + place.toUtf8()});
        m_server->answer(200, "here");
        HttpRequest request = post(*m_server, "{}", u"/sub/path"_s);
        request.headers.append(HttpHeader{"X-API-Key", "secret"});
        const auto reply = sent(request);
        QVERIFY2(reply, qPrintable(reasonOf(reply)));
        QCOMPARE(reply->body, QByteArray("here"));
        QCOMPARE(m_server->firstLine(1), line);
        QCOMPARE(m_server->header("X-API-Key", 1), QByteArray("secret"));
        const bool isPost = line.startsWith("POST");
        QCOMPARE(m_server->body(1), QByteArray(isPost ? "{}" : ""));
        QCOMPARE(m_server->header("Content-Type", 1).has_value(), isPost);
    }

    void leavesARedirectElsewhereAlone_data()
    {
        QTest::addColumn<QByteArray>("location");
        const auto row = [](const char *name, const QByteArray &location) {
            QTest::newRow(name) << location;
        };
        row("another port", "http://127.0.0.1:{other}/");
        row("another host", "http://localhost:{port}/");
        row("another scheme", "https://127.0.0.1:{port}/");
        row("a file", "file:///etc/hostname");
        row("the host alone", "//localhost:{port}/");
        row("no address", "http://[/");
        row("nothing", "");
    }
    void leavesARedirectElsewhereAlone()
    {
        QFETCH(QByteArray, location);
        ScriptedServer other;
        location.replace("{other}", QByteArray::number(other.port()));
        location.replace("{port}", QByteArray::number(m_server->port()));
        m_server->answer(301, "moved", {"Location: " + location});
        m_server->answer(200, "here");
        other.answer(200, "there");
        const auto reply = sent(get(*m_server));
        QVERIFY2(reply, qPrintable(reasonOf(reply)));
        QCOMPARE(reply->status, 301);
        QCOMPARE(m_server->requests().size(), 1);
        QCOMPARE(other.requests().size(), 0);
    }

    void leavesOtherAnswersWithALocationAlone_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {200, 201, 300, 304, 305, 401, 500})
            QTest::addRow("%d", status) << status;
    }
    void leavesOtherAnswersWithALocationAlone()
    {
        QFETCH(int, status);
        m_server->answer(status, {}, {"Location: /elsewhere"});
        QCOMPARE(reasonOf(sent(get(*m_server))), u"status %1"_s.arg(status));
        QCOMPARE(m_server->requests().size(), 1);
    }

    void takesARedirectToNowhereForTheAnswer()
    {
        m_server->answer(301);
        QCOMPARE(reasonOf(sent(get(*m_server))), u"status 301"_s);
    }

    void endsACircleOfRedirects()
    {
        for (int i = 0; i < 30; ++i)
            m_server->answer(302, {}, {"Location: /again"});
        QCOMPARE(reasonOf(sent(get(*m_server))), u"The server redirects without an end."_s);
        QCOMPARE(m_server->requests().size(), 21);
    }

    void keepsNoCookies()
    {
        m_server->answer(302, {}, {"Set-Cookie: who=dj; Path=/", "Location: /on"});
        m_server->answer(200);
        m_server->answer(200);
        QVERIFY(sent(get(*m_server)));
        QVERIFY(sent(get(*m_server)));
        QCOMPARE(m_server->requests().size(), 3);
        for (int i = 0; i < 3; ++i)
            QVERIFY(!m_server->header("Cookie", i));
    }

    void asksTheServerAgainRatherThanACache()
    {
        for (int i = 0; i < 2; ++i) {
            m_server->answer(200, "x", {"Cache-Control: max-age=3600", "ETag: \"1\""});
            QVERIFY(sent(get(*m_server)));
        }
        QCOMPARE(m_server->requests().size(), 2);
        QVERIFY(!m_server->header("If-None-Match", 1));
    }

private:
    std::unique_ptr<ScriptedServer> m_server;
};

QTEST_GUILESS_MAIN(HttpExchangeTest)
#include "http_exchange_test.moc"
