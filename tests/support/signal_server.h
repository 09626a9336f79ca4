#pragma once

#include "support/child_process.h"

#include <QStringList>

namespace tarnwick::testing {

/// The Signal server of tools/signal_server, a process with a real pool, for the guard's life. Its
/// chart shows what one DJ plays unless told otherwise.
class SignalServer
{
public:
    explicit SignalServer(const QStringList &options = {})
        : m_process(QStringList{QStringLiteral(PYTHON), QStringLiteral("-B"),
                                QStringLiteral(SIGNAL_SERVER), QStringLiteral("--min-djs"),
                                QStringLiteral("1")} +
                        options,
                    ChildProcess::Output::Kept)
    {
        m_url = QString::fromUtf8(m_process.readLine()).section(u' ', -1);
        if (m_url.isEmpty())
            qFatal("the Signal server doesn't start");
    }
    SignalServer(const SignalServer &) = delete;
    SignalServer &operator=(const SignalServer &) = delete;

    QString url() const { return m_url; }

private:
    ChildProcess m_process;
    QString m_url;
};

} // namespace tarnwick::testing
