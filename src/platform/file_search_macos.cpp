// The system's own index answers here.

#include "foundation/paths.h"
#include "platform/file_search.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

QStringList indexedFilesNamedLike(const QString &text)
{
    QProcess search;
    search.start(u"/usr/bin/mdfind"_s, {u"-name"_s, text});
    if (!search.waitForFinished(-1))
        return {};
    return QString::fromUtf8(search.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

QList<QStringList> findFiles(const FileSearch &search, const QStringList &texts)
{
    QList<QStringList> found;
    for (const QString &text : texts) {
        QStringList paths = indexedFilesNamedLike(text);
        paths.removeIf([&](const QString &path) {
            return !search.extensions.contains(pathExtension(path).toLower());
        });
        found.append(paths);
    }
    return found;
}

} // namespace tarnwick::platform
