#include "signal/signal_wire.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

SignalConfig serverAt(const QString &url)
{
    return {.serverUrl = url, .djHash = u"DJ-1"_s, .city = u"Detroit"_s};
}

PlayEvent play(const QString &key, const QString &week)
{
    return {key, u"Title "_s + key, u"Artist"_s, u"House"_s, week, u"/Users/dj/secret.mp3"_s};
}

QByteArray urlOf(const SignalResult<platform::HttpRequest> &request)
{
    return request ? request->url.toEncoded() : request.error().message().toUtf8();
}

QByteArray headerOf(const SignalResult<platform::HttpRequest> &request, const QByteArray &name)
{
    for (const platform::HttpHeader &header : request.value().headers) {
        if (header.name == name)
            return header.value;
    }
    return "none";
}

} // namespace

class SignalWireTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makesAnAddressOfWhatTheUserTyped_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QByteArray>("address");
        const auto row = [](const char *name, const QString &typed, const QByteArray &address) {
            QTest::newRow(name) << typed << address;
        };
        row("a host", u"signal.example"_s, "https://signal.example/stats");
        row("blanks around it", u" \t signal.example\u3000 "_s, "https://signal.example/stats");
        row("a host with a port", u"signal.example:8080"_s, "https://signal.example:8080/stats");
        row("a scheme and a port", u"http://signal.example:8080"_s,
            "http://signal.example:8080/stats");
        row("https", u"https://signal.example"_s, "https://signal.example/stats");
        row("a slash behind it", u"https://signal.example/"_s, "https://signal.example/stats");
        row("below a path", u"https://signal.example/crew/a%20b"_s,
            "https://signal.example/crew/a%20b/stats");
        row("below a path with a slash", u"signal.example/crew/"_s,
            "https://signal.example/crew/stats");
        row("an address of numbers", u"http://[::1]:80"_s, "http://[::1]:80/stats");
        row("an upper-case scheme", u"HTTP://signal.example"_s,
            "https://http//signal.example/stats");
        row("a scheme that begins alike", u"httpx://signal.example"_s,
            "httpx://signal.example/stats");
        const QByteArray none = "Set your Signal server URL first.";
        row("nothing", u""_s, none);
        row("blanks alone", u" \t"_s, none);
        row("a host that begins like a scheme", u"httpbin.example"_s, none);
        row("a scheme alone", u"http://"_s, none);
        row("a scheme with a path", u"https:///stats"_s, none);
        row("a blank inside", u"signal example"_s, none);
        row("a line break behind it", u"https://signal.example\n"_s, none);
        row("a bad port", u"signal.example:port"_s, none);
        row("a bad escape", u"https://signal.example/%zz"_s, none);
    }
    void makesAnAddressOfWhatTheUserTyped()
    {
        QFETCH(QString, typed);
        QTEST(urlOf(SignalWire::statsRequest(serverAt(typed))), "address");
    }

    void asksEachQuestionAtItsPlace()
    {
        const SignalConfig config = serverAt(u"http://s.example"_s);
        QCOMPARE(urlOf(SignalWire::healthRequest(config)), "http://s.example/health");
        QCOMPARE(urlOf(SignalWire::statsRequest(config)), "http://s.example/stats");
        QCOMPARE(urlOf(SignalWire::landingRequest(config, 7, {}, {})),
                 "http://s.example/landing?window=7");
        QCOMPARE(urlOf(SignalWire::eventsRequest(config, {})), "http://s.example/events");
        QCOMPARE(urlOf(SignalWire::leaveRequest(config)), "http://s.example/leave");
    }

    void asksForTheChartOfAWindowLaneAndCity_data()
    {
        using Filter = std::optional<QString>;
        QTest::addColumn<int>("window");
        QTest::addColumn<Filter>("lane");
        QTest::addColumn<Filter>("city");
        QTest::addColumn<QByteArray>("query");
        const auto row = [](const char *name, int window, const Filter &lane, const Filter &city,
                            const QByteArray &query) {
            QTest::newRow(name) << window << lane << city << query;
        };
        row("nothing else", 30, {}, {}, "window=30");
        row("all", 90, u"All"_s, u"All"_s, "window=90");
        row("in small letters", 7, u"all"_s, u"all"_s, "window=7&lane=all&city=all");
        row("both", 7, u"House"_s, u"Detroit"_s, "window=7&lane=House&city=Detroit");
        row("an empty city", 7, u"House"_s, u""_s, "window=7&lane=House");
        row("an empty lane", 7, u""_s, {}, "window=7&lane=");
        row("a window of nothing", 0, {}, {}, "window=0");
        row("below nothing", -7, {}, {}, "window=-7");
        row("blanks", 7, u"Deep House"_s, u"New York"_s,
            "window=7&lane=Deep%20House&city=New%20York");
        row("signs that mean something", 7, u"R&B #1 + 50%=?/;"_s, {},
            "window=7&lane=R%26B%20%231%20%2B%2050%25%3D%3F%2F%3B");
        row("something that looks encoded", 7, u"%41"_s, {}, "window=7&lane=%2541");
        row("beyond ASCII", 7, u"100–120 BPM"_s, u"Zürich🎵"_s,
            "window=7&lane=100%E2%80%93120%20BPM&city=Z%C3%BCrich%F0%9F%8E%B5");
        row("a line break", 7, u"a\nb"_s, {}, "window=7&lane=a%0Ab");
    }
    void asksForTheChartOfAWindowLaneAndCity()
    {
        QFETCH(int, window);
        QFETCH(std::optional<QString>, lane);
        QFETCH(std::optional<QString>, city);
        QFETCH(QByteArray, query);
        const auto request =
            SignalWire::landingRequest(serverAt(u"http://s.example/sub"_s), window, lane, city);
        QCOMPARE(urlOf(request), "http://s.example/sub/landing?" + query);
        QCOMPARE(request->method, platform::HttpRequest::Method::Get);
    }

    void sendsTheAccessKeyWithoutItsBlanks_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QByteArray>("header");
        QTest::newRow("a key") << u"k 1"_s << QByteArray("k 1");
        QTest::newRow("blanks around it") << u" \tk\u00A0 "_s << QByteArray("k");
        QTest::newRow("beyond ASCII") << u"schlüssel"_s << QByteArray("schl\xC3\xBCssel");
        QTest::newRow("none") << u""_s << QByteArray("none");
        QTest::newRow("blanks alone") << u" \t "_s << QByteArray("none");
    }
    void sendsTheAccessKeyWithoutItsBlanks()
    {
        QFETCH(QString, key);
        QFETCH(QByteArray, header);
        SignalConfig config = serverAt(u"s.example"_s);
        config.apiKey = key;
        QCOMPARE(headerOf(SignalWire::healthRequest(config), "X-API-Key"), header);
        QCOMPARE(headerOf(SignalWire::statsRequest(config), "X-API-Key"), header);
        QCOMPARE(headerOf(SignalWire::landingRequest(config, 7, {}, {}), "X-API-Key"), header);
        QCOMPARE(headerOf(SignalWire::eventsRequest(config, {}), "X-API-Key"), header);
        QCOMPARE(headerOf(SignalWire::leaveRequest(config), "X-API-Key"), header);
    }

    void sharesPlaysAsFlatTexts()
    {
        SignalConfig config = serverAt(u"s.example"_s);
        config.city = u" São \"Paulo\" "_s;
        const PlayEvent events[] = {{u"3b875567370c54066fe0"_s, u"One\nMore"_s, u"Daft / Punk"_s,
                                     u"100–120 BPM"_s, u"2026-11-16"_s, u"/Users/dj/a.mp3"_s}};
        const auto request = SignalWire::eventsRequest(config, events);
        QCOMPARE(request->method, platform::HttpRequest::Method::Post);
        QCOMPARE(headerOf(request, "Content-Type"), QByteArray("application/json"));
        const QByteArray expected = "{'dj_hash':'DJ-1','events':[{"
                                    "'track_key':'3b875567370c54066fe0',"
                                    "'title':'One\\nMore',"
                                    "'artist':'Daft / Punk',"
                                    "'lane':'100–120 BPM',"
                                    "'city_bucket':' São \\'Paulo\\' ',"
                                    "'week':'2026-11-16'}]}";
        QCOMPARE(request->body, QByteArray(expected).replace('\'', '"'));
    }

    void sharesATrackOnceAWeek()
    {
        const PlayEvent events[] = {play(u"a"_s, u"2026-11-16"_s), play(u"b"_s, u"2026-11-16"_s),
                                    play(u"a"_s, u"2026-11-16"_s), play(u"a"_s, u"2026-11-09"_s),
                                    play(u"a"_s, u"2026-11-16"_s)};
        const QByteArray body = SignalWire::eventsBody(serverAt(u"s.example"_s), events);
        QStringList sent;
        for (const QJsonValue &event : QJsonDocument::fromJson(body)[u"events"].toArray())
            sent << event[u"track_key"].toString() + u' ' + event[u"week"].toString();
        QCOMPARE(sent, (QStringList{u"a 2026-11-16"_s, u"b 2026-11-16"_s, u"a 2026-11-09"_s}));
    }

    void sharesTheFirstOfEqualPlays()
    {
        PlayEvent later = play(u"a"_s, u"2026-11-16"_s);
        later.lane = u"Techno"_s;
        const PlayEvent events[] = {play(u"a"_s, u"2026-11-16"_s), later};
        const QByteArray body = SignalWire::eventsBody(serverAt(u"s.example"_s), events);
        QVERIFY(body.contains("House") && !body.contains("Techno"));
    }

    void sharesNoPath()
    {
        const PlayEvent events[] = {play(u"a"_s, u"2026-11-16"_s)};
        QVERIFY(!SignalWire::eventsBody(serverAt(u"s.example"_s), events).contains("secret"));
    }

    void sharesNothingAsAnEmptyList()
    {
        QCOMPARE(SignalWire::eventsBody(serverAt(u"s.example"_s), {}),
                 QByteArray(R"({"dj_hash":"DJ-1","events":[]})"));
    }

    void leavesByItsIdentityAlone()
    {
        const auto request = SignalWire::leaveRequest(serverAt(u"s.example"_s));
        QCOMPARE(request->method, platform::HttpRequest::Method::Post);
        QCOMPARE(headerOf(request, "Content-Type"), QByteArray("application/json"));
        QCOMPARE(request->body, QByteArray(R"({"dj_hash":"DJ-1"})"));
    }

    void readsAChart()
    {
        const QByteArray body = R"({"min_djs":5,"more":{"a":[1]},"tracks":[
            {"track_key":"k1","title":"T","artist":"A","djs":12,"plays":40,"lanes":"House,Techno"},
            {"track_key":"k2","title":null,"djs":5,"plays":5.0,"rank":2}]})";
        const QList<LandingTrack> expected = {{u"k1"_s, u"T"_s, u"A"_s, 12, 40, u"House,Techno"_s},
                                              {u"k2"_s, {}, {}, 5, 5, {}}};
        QCOMPARE(SignalWire::landingIn(body), expected);
        QCOMPARE(expected.first().id(), u"k1"_s);
    }

    void readsAnEmptyChart()
    {
        QCOMPARE(SignalWire::landingIn(R"({"tracks":[],"min_djs":5})"), QList<LandingTrack>());
    }

    void refusesAChartOfAnotherShape_data()
    {
        QTest::addColumn<QByteArray>("body");
        const auto row = [](const char *name, const QByteArray &body) {
            QTest::newRow(name) << body;
        };
        const auto chart = [](const QByteArray &track) {
            return R"({"min_djs":5,"tracks":[{"track_key":"k","djs":5,"plays":9},)" + track + "]}";
        };
        row("nothing", "");
        row("no JSON", "<html>");
        row("cut short", R"({"min_djs":5,"tracks":[)");
        row("a list", R"([{"track_key":"k","djs":5,"plays":9}])");
        row("without min_djs", R"({"tracks":[]})");
        row("without tracks", R"({"min_djs":5})");
        row("tracks of null", R"({"min_djs":5,"tracks":null})");
        row("min_djs as text", R"({"min_djs":"5","tracks":[]})");
        row("more behind it", R"({"min_djs":5,"tracks":[]}x)");
        row("a track without a key", chart(R"({"djs":5,"plays":9})"));
        row("a track without djs", chart(R"({"track_key":"k","plays":9})"));
        row("a track without plays", chart(R"({"track_key":"k","djs":5})"));
        row("djs as text", chart(R"({"track_key":"k","djs":"5","plays":9})"));
        row("djs in halves", chart(R"({"track_key":"k","djs":5.5,"plays":9})"));
        row("djs beyond 64 bits",
            chart(R"({"track_key":"k","djs":9223372036854775808,"plays":9})"));
        row("a title as number", chart(R"({"track_key":"k","djs":5,"plays":9,"title":7})"));
        row("lanes as list", chart(R"({"track_key":"k","djs":5,"plays":9,"lanes":["a"]})"));
        row("a track of null", chart("null"));
    }
    void refusesAChartOfAnotherShape()
    {
        QFETCH(QByteArray, body);
        QVERIFY(!SignalWire::landingIn(body));
    }

    void readsTotals()
    {
        const SignalClient::PoolStats expected = {.djs = 3, .plays = 9007199254740993, .tracks = 2};
        QCOMPARE(SignalWire::statsIn(R"({"tracks":2,"djs":3,"plays":9007199254740993,"x":0})"),
                 expected);
        QVERIFY(!SignalWire::statsIn(R"({"djs":3,"plays":9})"));
        QVERIFY(!SignalWire::statsIn(R"({"djs":3,"plays":9,"tracks":null})"));
        QVERIFY(!SignalWire::statsIn(R"({"djs":3,"plays":9,"tracks":2)"));
    }

    void readsWhatADjFeeds()
    {
        QCOMPARE(SignalWire::youFeedIn(R"({"accepted":4,"you_feed":17})"), 17);
        QVERIFY(!SignalWire::youFeedIn(R"({"you_feed":17})"));
        QVERIFY(!SignalWire::youFeedIn(R"({"accepted":4})"));
        QVERIFY(!SignalWire::youFeedIn(R"({"accepted":4,"you_feed":true})"));
        QVERIFY(!SignalWire::youFeedIn("17"));
    }

    void readsWhatWasErased()
    {
        QCOMPARE(SignalWire::deletedIn(R"({"deleted":4})"), 4);
        QVERIFY(!SignalWire::deletedIn("{}"));
        QVERIFY(!SignalWire::deletedIn(""));
    }
};

QTEST_GUILESS_MAIN(SignalWireTest)
#include "signal_wire_test.moc"
