#include "signal/signal_error.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class SignalErrorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsTheUserWhatWentWrong_data()
    {
        QTest::addColumn<SignalError>("error");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, const SignalError &error, const QString &message) {
            QTest::newRow(name) << error << message;
        };
        row("401", SignalError::http(401),
            u"Access key required or incorrect — check the key your crew gave you."_s);
        row("429", SignalError::http(429), u"Too many requests — give it a moment."_s);
        row("500", SignalError::http(500), u"Server returned 500."_s);
        row("403", SignalError::http(403), u"Server returned 403."_s);
        row("no HTTP", SignalError::http(0), u"Server returned 0."_s);
        row("no answer", SignalError::transport(u"Connection refused"_s),
            u"Couldn't reach the server: Connection refused"_s);
        row("no server", SignalError::noServer(), u"Set your Signal server URL first."_s);
        row("unreadable", SignalError::unreadable(), u"The server's answer couldn't be read."_s);
    }
    void tellsTheUserWhatWentWrong()
    {
        QFETCH(SignalError, error);
        QTEST(error.message(), "message");
    }
};

QTEST_GUILESS_MAIN(SignalErrorTest)
#include "signal_error_test.moc"
