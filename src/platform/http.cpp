#include "platform/http.h"

#include "platform/http_module.h"

#include <QCoreApplication>
#include <QLibrary>

#include <atomic>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

/// 0 where no test has set one.
std::atomic<std::chrono::milliseconds::rep> patienceForTests{0};

HttpSender loadSender()
{
    const QString folder = QCoreApplication::applicationDirPath();
    QLibrary module(folder + u'/' + QString::fromUtf16(httpModulePlace));
    // The cast is what resolving a symbol is about.
    const auto entry = reinterpret_cast<HttpModuleEntry>(module.resolve(httpModuleEntryName));
    return entry ? entry() : nullptr;
}

} // namespace

Result<HttpReply> sendHttp(const HttpRequest &request)
{
    static const HttpSender sender = loadSender();
    if (!sender)
        return failure(u"A part of this program, “tarnwick_http”, is not installed."_s);
    HttpRequest patient = request;
    if (const auto milliseconds = patienceForTests.load(); milliseconds > 0)
        patient.patience = std::chrono::milliseconds(milliseconds);
    return sender(patient);
}

ScopedHttpPatience::ScopedHttpPatience(std::chrono::milliseconds patience)
{
    patienceForTests = patience.count();
}

ScopedHttpPatience::~ScopedHttpPatience()
{
    patienceForTests = 0;
}

} // namespace tarnwick::platform
