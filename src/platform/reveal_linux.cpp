// The file managers of all desktops answer to one name on the session's message bus.

#include "foundation/paths.h"
#include "platform/reveal.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

/// Time to start a file manager that isn't running, on a slow disk.
constexpr int patienceInMilliseconds = 20000;

QDBusMessage callToShow(const QString &path)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
        u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    const QString url = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    call.setArguments({QStringList{url}, QString()});
    return call;
}

bool showsItem(const QString &path)
{
    const QDBusMessage answer =
        QDBusConnection::sessionBus().call(callToShow(path), QDBus::Block, patienceInMilliseconds);
    return answer.type() == QDBusMessage::ReplyMessage;
}

} // namespace

void revealAndWait(const QString &path)
{
    if (!showsItem(path))
        QProcess::startDetached(u"xdg-open"_s, {parentFolder(path)});
}

} // namespace tarnwick::platform
