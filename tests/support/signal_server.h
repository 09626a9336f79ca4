#pragma once

#include <QProcess>
#include <QStringList>
#include <QTest>

namespace tarnwick::testing {

/// The Signal server of tools/signal_server, a process with a real pool, for the guard's life. Its
/// chart shows what one DJ plays unless told otherwise.
class SignalServer
{
public:
    explicit SignalServer(const QStringList &options = {})
    {
        const QStringList script = {QStringLiteral("-B"), QStringLiteral(SIGNAL_SERVER),
                                    QStringLiteral("--min-djs"), QStringLiteral("1")};
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(PYTHON), script + options);
        if (!QTest::qWaitFor([this] { return m_process.canReadLine(); }, 30000))
            qFatal("the Signal server doesn't start");
        m_url = QString::fromUtf8(m_process.readLine().trimmed()).section(u' ', -1);
    }
    ~SignalServer()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    SignalServer(const SignalServer &) = delete;
    SignalServer &operator=(const SignalServer &) = delete;

    QString url() const { return m_url; }

private:
    QProcess m_process;
    QString m_url;
};

} // namespace tarnwick::testing
