// How the module that talks HTTP is found. What it does: http_exchange_test.

#include "platform/http.h"

#include "support/child_process.h"
#include "support/scripted_server.h"
#include "support/test_folder.h"

#include <QCoreApplication>
#include <QTest>

#include <cstdio>
#include <future>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

/// The life of this program where it is started as another one: sends a request and tells how it
/// went.
int sendAndTell(const QString &url)
{
    const auto reply = platform::sendHttp({.url = QUrl(url)});
    const QString outcome = reply ? QString::number(reply->status) : reply.error().message;
    std::fputs(qUtf8Printable(outcome), stdout);
    return 0;
}

/// What a copy of this program in a folder of its own says.
QString outcomeOfCopy(const TestFolder &folder, const QString &url)
{
    const QString program = folder.makeFolder(u"bin"_s) + u"/program"_s;
    if (!QFile::copy(QCoreApplication::applicationFilePath(), program))
        return u"no copy"_s;
    return whileServing([&] {
        ChildProcess process({program, u"--send"_s, url}, ChildProcess::Output::Kept);
        return QString::fromUtf8(process.readLine());
    });
}

} // namespace

class HttpTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsWhereItsModuleIsMissing()
    {
        const TestFolder folder;
        const QString outcome = outcomeOfCopy(folder, u"http://127.0.0.1:1/"_s);
        QCOMPARE(outcome, u"A part of this program, “tarnwick_http”, is not installed."_s);
    }

    void findsItsModuleFromTheProgramsFolder()
    {
        const TestFolder folder;
        const QString built = QCoreApplication::applicationDirPath() + u"/../lib"_s;
        QVERIFY(QFile::link(QFileInfo(built).canonicalFilePath(), folder.path(u"lib"_s)));
        ScriptedServer server;
        server.answer(204);
        QCOMPARE(outcomeOfCopy(folder, server.url()), u"204"_s);
    }

    void servesSeveralThreadsAtOnce()
    {
        ScriptedServer server;
        for (int i = 0; i < 8; ++i)
            server.answer(200, "hello");
        const int answers = whileServing([&] {
            std::vector<std::future<bool>> calls;
            for (int i = 0; i < 8; ++i)
                calls.push_back(std::async(std::launch::async, [&server] {
                    return platform::sendHttp({.url = QUrl(server.url())}).has_value();
                }));
            return int(
                std::count_if(calls.begin(), calls.end(), [](auto &call) { return call.get(); }));
        });
        QCOMPARE(answers, 8);
    }
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"--send"_s)
        return sendAndTell(arguments.value(2));
    HttpTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "http_test.moc"
