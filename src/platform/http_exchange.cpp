// The module behind http.h. It is the only code that includes Qt Network, and it links nothing else
// of this program.

#include "platform/http_module.h"

#include <QEventLoop>
#include <QIODevice>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

constexpr int mostRedirects = 20;

bool hasSameOrigin(const QUrl &a, const QUrl &b)
{
    const auto port = [](const QUrl &url) {
        return url.port(url.scheme() == u"https"_s ? 443 : 80);
    };
    return a.scheme() == b.scheme() && a.host() == b.host() && port(a) == port(b);
}

/// A header ends at a line break: what comes behind one would be a header of its own.
QByteArray withoutLineBreaks(QByteArray value)
{
    return value.replace('\r', QByteArrayView()).replace('\n', QByteArrayView());
}

/// Whether the status is one that a Location may go with.
bool isRedirect(int status)
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

int statusOf(const QNetworkReply &reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

/// Whether no whole answer came. Qt calls an answer with a status from 400 an error too.
bool hasNoAnswer(const QNetworkReply &reply)
{
    const QNetworkReply::NetworkError error = reply.error();
    if (error == QNetworkReply::NoError)
        return false;
    const int status = statusOf(reply);
    // An answer that Qt would have liked to meet with the same body once more.
    if (error == QNetworkReply::ContentReSendError)
        return status != 307 && status != 308 && status != 401 && status != 407;
    return status < 400 || error <= QNetworkReply::UnknownNetworkError ||
           error == QNetworkReply::ProtocolFailure;
}

QString reasonOf(const QNetworkReply &reply)
{
    // Qt's own words for it are about what it would have liked to do next.
    const bool wasClosed = reply.error() == QNetworkReply::ContentReSendError;
    return wasClosed ? u"Connection closed"_s : reply.errorString();
}

/// What a POST sends. It can't be read twice, so that Qt can't send it again by itself where the
/// server closes the connection without an answer.
class OneTimeBody : public QIODevice
{
public:
    explicit OneTimeBody(const QByteArray &bytes)
        : m_bytes(bytes)
    {
        open(ReadOnly);
    }

    bool isSequential() const override { return true; }
    bool reset() override { return m_at == 0; }
    qint64 bytesAvailable() const override { return m_bytes.size() - m_at; }
    bool atEnd() const override { return bytesAvailable() == 0; }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        if (atEnd())
            return -1;
        const qint64 taken = qMin(size, bytesAvailable());
        std::copy_n(m_bytes.constData() + m_at, taken, data);
        m_at += taken;
        return taken;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    const QByteArray m_bytes;
    qint64 m_at = 0;
};

/// An answer that is on its way. Waits in an event loop of its own.
class Arrival
{
public:
    Arrival(QNetworkReply &reply, const HttpRequest &request)
        : m_reply(reply)
        , m_largest(request.largestBody)
    {
        m_patience.setSingleShot(true);
        m_patience.setInterval(request.patience);
    }

    /// The whole body.
    Result<QByteArray> wait();

private:
    void receive();
    void giveUp(const QString &reason);

    QNetworkReply &m_reply;
    const qint64 m_largest;
    QTimer m_patience;
    QByteArray m_body;
    std::optional<QString> m_givenUp;
    QEventLoop m_loop;
};

Result<QByteArray> Arrival::wait()
{
    const auto showLife = [this] { m_patience.start(); };
    QObject::connect(&m_reply, &QNetworkReply::readyRead, &m_loop, [this] { receive(); });
    QObject::connect(&m_reply, &QNetworkReply::metaDataChanged, &m_loop, showLife);
    QObject::connect(&m_reply, &QNetworkReply::uploadProgress, &m_loop, showLife);
    QObject::connect(&m_reply, &QNetworkReply::finished, &m_loop, &QEventLoop::quit);
    QObject::connect(&m_patience, &QTimer::timeout, &m_loop,
                     [this] { giveUp(u"The request timed out."_s); });
    m_patience.start();
    if (!m_reply.isFinished())
        m_loop.exec();
    if (!m_givenUp)
        receive();
    if (m_givenUp)
        return failure(*m_givenUp);
    if (hasNoAnswer(m_reply))
        return failure(reasonOf(m_reply));
    return m_body;
}

void Arrival::receive()
{
    m_patience.start();
    m_body += m_reply.read(m_largest + 1 - m_body.size());
    if (m_body.size() > m_largest)
        giveUp(u"The server's answer is too large."_s);
}

void Arrival::giveUp(const QString &reason)
{
    m_givenUp = reason;
    m_loop.quit();
}

/// One request with the redirects that it leads to.
class Exchange
{
public:
    explicit Exchange(const HttpRequest &request)
        : m_request(request)
    {}

    Result<HttpReply> run();

private:
    std::unique_ptr<QNetworkReply> sendOver(QNetworkAccessManager &network);
    QNetworkRequest prepared() const;
    bool follow(const QNetworkReply &reply);

    HttpRequest m_request;
    std::unique_ptr<OneTimeBody> m_body;
};

Result<HttpReply> Exchange::run()
{
    for (int redirects = 0; redirects <= mostRedirects; ++redirects) {
        // A connection of its own: one that the server is about to close would cost a POST its
        // only try.
        QNetworkAccessManager network;
        const std::unique_ptr<QNetworkReply> reply = sendOver(network);
        const Result<QByteArray> body = Arrival(*reply, m_request).wait();
        if (!body)
            return tl::unexpected(body.error());
        if (!follow(*reply))
            return HttpReply{statusOf(*reply), *body};
    }
    return failure(u"The server redirects without an end."_s);
}

std::unique_ptr<QNetworkReply> Exchange::sendOver(QNetworkAccessManager &network)
{
    QNetworkRequest request = prepared();
    if (m_request.method == HttpRequest::Method::Get)
        return std::unique_ptr<QNetworkReply>(network.get(request));
    request.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    request.setHeader(QNetworkRequest::ContentLengthHeader, m_request.body.size());
    m_body = std::make_unique<OneTimeBody>(m_request.body);
    return std::unique_ptr<QNetworkReply>(network.post(request, m_body.get()));
}

QNetworkRequest Exchange::prepared() const
{
    QNetworkRequest request(m_request.url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    for (const auto attribute :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute})
        request.setAttribute(attribute, QNetworkRequest::Manual);
    // What Qt would fill in itself tells the user's language and calls this program a browser.
    request.setRawHeader("User-Agent", "Tarnwick");
    request.setRawHeader("Accept-Language", "*");
    for (const auto &[name, value] : m_request.headers)
        request.setRawHeader(name, withoutLineBreaks(value));
    return request;
}

/// Turns the request into the one that a redirect asks for. False where it is none to be followed.
bool Exchange::follow(const QNetworkReply &reply)
{
    const int status = statusOf(reply);
    if (!isRedirect(status) || !reply.hasRawHeader("Location"))
        return false;
    const QUrl location = QUrl::fromEncoded(reply.rawHeader("Location"), QUrl::StrictMode);
    const QUrl target = m_request.url.resolved(location);
    if (!location.isValid() || !hasSameOrigin(target, m_request.url))
        return false;
    m_request.url = target;
    // As browsers do it: only these two ask for the same once more.
    if (status != 307 && status != 308) {
        m_request.method = HttpRequest::Method::Get;
        m_request.body.clear();
        m_request.headers.removeIf(
            [](const HttpHeader &header) { return header.name == "Content-Type"; });
    }
    return true;
}

} // namespace

} // namespace tarnwick::platform

extern "C" Q_DECL_EXPORT tarnwick::platform::HttpSender tarnwickHttpSender()
{
    return [](const tarnwick::platform::HttpRequest &request) {
        return tarnwick::platform::Exchange(request).run();
    };
}
