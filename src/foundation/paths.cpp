#include "foundation/paths.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

QStringView withoutTrailingSlashes(QStringView path)
{
    while (path.size() > 1 && path.back() == u'/')
        path.chop(1);
    return path;
}

/// Where the point ahead of the extension stands in a file name; -1 for a name without one.
qsizetype extensionPoint(QStringView name)
{
    const qsizetype point = name.lastIndexOf(u'.');
    return point > 0 && point < name.size() - 1 ? point : -1;
}

} // namespace

QString lastPathComponent(const QString &path)
{
    const QStringView trimmed = withoutTrailingSlashes(path);
    if (trimmed == u"/")
        return trimmed.toString();
    return trimmed.sliced(trimmed.lastIndexOf(u'/') + 1).toString();
}

QString pathExtension(const QString &path)
{
    const QString name = lastPathComponent(path);
    const qsizetype point = extensionPoint(name);
    return point < 0 ? QString() : name.sliced(point + 1);
}

QString baseName(const QString &path)
{
    const QString name = lastPathComponent(path);
    const qsizetype point = extensionPoint(name);
    return point < 0 ? name : name.first(point);
}

QString joinedPath(const QString &folder, const QString &name)
{
    return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

QString parentFolder(const QString &path)
{
    const QStringView trimmed = withoutTrailingSlashes(path);
    const qsizetype slash = trimmed.lastIndexOf(u'/');
    if (slash <= 0)
        return slash == 0 ? u"/"_s : QString();
    return withoutTrailingSlashes(trimmed.first(slash)).toString();
}

QString standardizedPath(const QString &path)
{
    QStringList kept;
    for (const QString &part : path.split(u'/', Qt::SkipEmptyParts)) {
        if (part == u"."_s)
            continue;
        if (part == u".."_s && !kept.isEmpty() && kept.last() != u".."_s)
            kept.removeLast();
        else if (part != u".."_s || !path.startsWith(u'/'))
            kept.append(part);
    }
    return (path.startsWith(u'/') ? u"/"_s : QString()) + kept.join(u'/');
}

QString withoutLeadingSlash(const QString &path)
{
    return path.startsWith(u'/') ? path.sliced(1) : path;
}

} // namespace tarnwick
