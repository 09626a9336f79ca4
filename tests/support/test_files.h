#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QString>

#include <sys/stat.h>
#include <unistd.h>

/// Plain handling of files for tests, apart from the code under test.
namespace tarnwick::testing {

inline void put(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("can't write %s", qPrintable(path));
}

/// The content; "(none)" where no file can be read.
inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

/// All names in a folder, hidden ones included, in name order.
inline QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

/// What a link holds, as it stands.
inline QByteArray linkAt(const QString &path)
{
    QByteArray target(4096, '\0');
    const ssize_t length = ::readlink(QFile::encodeName(path).constData(), target.data(), 4096);
    return target.first(length < 0 ? 0 : length);
}

/// Every file below a folder with its content, by relative path; folders end in a slash, links tell
/// where they lead.
inline QMap<QString, QByteArray> treeOf(const QString &folder, const QString &prefix = {})
{
    QMap<QString, QByteArray> tree;
    for (const QString &name : namesIn(folder)) {
        const QFileInfo info(folder + u'/' + name);
        const QString key = prefix + name;
        if (info.isSymbolicLink())
            tree[key] = "-> " + linkAt(info.filePath());
        else if (info.isDir())
            tree[key + u'/'] = {}, tree.insert(treeOf(info.filePath(), key + u'/'));
        else if (info.isFile())
            tree[key] = contentOf(info.filePath());
        else
            tree[key] = "(special)";
    }
    return tree;
}

/// The permission bits of the entry itself.
inline int modeOf(const QString &path)
{
    struct stat status;
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 ? int(status.st_mode & 07777)
                                                                      : -1;
}

} // namespace tarnwick::testing
