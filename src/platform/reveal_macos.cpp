#include "platform/reveal.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

void revealAndWait(const QString &path)
{
    QProcess::startDetached(u"/usr/bin/open"_s, {u"-R"_s, path});
}

} // namespace tarnwick::platform
