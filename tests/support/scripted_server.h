#pragma once

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <thread>

namespace tarnwick::testing {

/// An HTTP server on loopback that says what a test wrote down, good or bad, and keeps every byte
/// that it was sent. Serves while the test's event loop runs: see `whileServing`.
class ScriptedServer
{
public:
    enum class Afterwards { Close, KeepOpen };

    ScriptedServer()
    {
        if (!m_server.listen(QHostAddress::LocalHost))
            qFatal("can't listen on loopback");
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { accept(); });
    }

    quint16 port() const { return m_server.serverPort(); }
    QString url() const { return QStringLiteral("http://127.0.0.1:%1").arg(port()); }
    /// No one listens at the address from now on.
    void stopListening() { m_server.close(); }

    /// The answer to the next request that has none yet, byte by byte. A request beyond the last
    /// one's answer gets the connection closed.
    void answer(const QByteArray &bytes, Afterwards afterwards = Afterwards::Close)
    {
        m_script.append({bytes, afterwards});
    }
    void answer(int status, const QByteArray &body = {}, const QByteArrayList &headers = {})
    {
        answer(message(status, body, headers));
    }
    /// An answer whose last bytes come one by one.
    void drip(const QByteArray &bytes, int slowly, std::chrono::milliseconds pause)
    {
        m_script.append({bytes.chopped(slowly), Afterwards::KeepOpen, bytes.last(slowly), pause});
    }
    /// Takes the next request and says nothing, ever.
    void keepSilent() { answer(QByteArray(), Afterwards::KeepOpen); }

    static QByteArray message(int status, const QByteArray &body,
                              const QByteArrayList &headers = {})
    {
        QByteArrayList lines = {"HTTP/1.1 " + QByteArray::number(status) + " Some reason",
                                "Connection: close"};
        if (status != 204 && status != 304)
            lines << "Content-Length: " + QByteArray::number(body.size());
        return (lines + headers).join("\r\n") + "\r\n\r\n" + body;
    }

    /// Every whole request, as it came, in order.
    const QByteArrayList &requests() const { return m_requests; }
    QByteArray firstLine(int request = 0) const
    {
        return m_requests.value(request).split('\r').value(0);
    }
    QByteArray body(int request = 0) const
    {
        const QByteArray whole = m_requests.value(request);
        return whole.sliced(whole.indexOf("\r\n\r\n") + 4);
    }
    /// The value of a header, nothing where it is not there.
    std::optional<QByteArray> header(const QByteArray &name, int request = 0) const
    {
        for (const QByteArray &line : headLines(request)) {
            if (line.startsWith(name + ": "))
                return line.sliced(name.size() + 2);
        }
        return std::nullopt;
    }
    QByteArrayList headerNames(int request = 0) const
    {
        QByteArrayList names;
        for (const QByteArray &line : headLines(request).sliced(1))
            names << line.first(line.indexOf(':'));
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    struct Answer
    {
        QByteArray bytes;
        Afterwards afterwards;
        QByteArray slowBytes = {};
        std::chrono::milliseconds pause = {};
    };

    QByteArrayList headLines(int request) const
    {
        const QByteArray whole = m_requests.value(request);
        return whole.first(whole.indexOf("\r\n\r\n")).replace("\r\n", "\n").split('\n');
    }

    void accept()
    {
        while (QTcpSocket *socket = m_server.nextPendingConnection()) {
            auto received = std::make_shared<QByteArray>();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, received] {
                *received += socket->readAll();
                if (isWhole(*received)) {
                    m_requests.append(*received);
                    received->clear();
                    answerOn(socket);
                }
            });
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    }

    static bool isWhole(const QByteArray &request)
    {
        const qsizetype head = request.indexOf("\r\n\r\n");
        if (head < 0)
            return false;
        const QByteArray name = "\r\ncontent-length: ";
        const qsizetype at = request.first(head).toLower().indexOf(name);
        const QByteArray rest =
            at < 0 ? "0" : request.sliced(at + name.size(), head - at - name.size());
        return request.size() - head - 4 >= rest.split('\r').value(0).toLongLong();
    }

    void answerOn(QTcpSocket *socket)
    {
        if (m_script.isEmpty()) {
            socket->close();
            return;
        }
        const Answer next = m_script.takeFirst();
        socket->write(next.bytes);
        for (qsizetype i = 0; i < next.slowBytes.size(); ++i)
            QTimer::singleShot(next.pause * (i + 1), socket,
                               [socket, byte = next.slowBytes.at(i)] { socket->putChar(byte); });
        if (next.afterwards == Afterwards::Close)
            socket->disconnectFromHost();
    }

    QTcpServer m_server;
    QList<Answer> m_script;
    QByteArrayList m_requests;
};

/// What a function gives that waits, called on a thread of its own while the event loop of the test
/// serves it.
template <typename Work>
auto whileServing(Work work)
{
    std::optional<decltype(work())> value;
    std::atomic<bool> isDone = false;
    std::thread thread([&] {
        value.emplace(work());
        isDone = true;
    });
    while (!isDone)
        QTest::qWait(1);
    thread.join();
    return *value;
}

} // namespace tarnwick::testing
