#pragma once

#include "platform/fault_gate.h"
#include "support/test_files.h"

#include <QDataStream>
#include <QHash>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/// What a disk forgets when the power goes.
///
/// 1. Bytes last once their file is flushed. Names last once some folder is flushed: file systems
///    keep them in one journal, in order. A flush of a file is not taken to keep its name.
/// 2. Whatever stood in the folder when the watch began lasts.
/// 3. What was not flushed may be lost in many ways. `Loss` names the four that are tried.
namespace tarnwick::testing {

/// A folder's files by relative path; folders end in a slash.
using Tree = QMap<QString, QByteArray>;

/// In which way that is lost which was not flushed.
enum class Loss {
    Bytes,      ///< names are kept; every file holds what was last flushed of it, or nothing
    HalfBytes,  ///< names are kept; of every file the first half of the unflushed content is left,
                ///< and behind it, of one that is written page by page, what was last flushed
    OlderBytes, ///< as with `Bytes`, but the file that was written last is whole
    Names,      ///< and so are names: the folder is as when one was last flushed
};

/// Whether an entry of a tree is a link, which tells where it leads.
inline bool isLink(const QByteArray &content)
{
    return content.startsWith("-> ");
}

inline const QList<Loss> &allLosses()
{
    static const QList<Loss> losses = {Loss::Bytes, Loss::HalfBytes, Loss::OlderBytes, Loss::Names};
    return losses;
}

/// What was not flushed at one moment.
struct Unflushed
{
    Tree lasting;                                ///< the folder as it would be without it
    QList<std::pair<QString, QByteArray>> files; ///< present ones with their lasting content,
                                                 ///< written last at the end

    bool isNothing(const Tree &present) const { return files.isEmpty() && lasting == present; }
};

/// Keeps account of what lasts in a folder. `note` is to be called ahead of each operation.
class FlushWatch
{
public:
    explicit FlushWatch(const QString &folder)
        : m_folder(folder)
    {
        keepNames();
        for (const auto &[name, file] : m_names.asKeyValueRange())
            keepBytes(file);
    }

    /// Within the watched folder, a flush is taken for done as soon as the next operation comes.
    void note(platform::FileOperation operation, const QString &path)
    {
        if (operation != platform::FileOperation::Flush || !path.startsWith(m_folder))
            return;
        if (path.endsWith(QStringLiteral("/.")))
            keepNames();
        else
            keepBytes(fileAt(path));
    }

    Unflushed unflushed() const
    {
        Unflushed unflushed;
        for (const auto &[name, file] : m_names.asKeyValueRange())
            unflushed.lasting[name] = m_links.value(name, m_bytes.value(file ? file->inode : 0));
        std::vector<std::pair<timespec, qsizetype>> order;
        for (const QString &name : namesBelow(m_folder)) {
            const auto file = name.endsWith(u'/') ? nullptr : fileAt(m_folder + u'/' + name);
            if (!file)
                continue;
            const QByteArray lasting = m_bytes.value(file->inode);
            if (lasting == contentOf(m_folder + u'/' + name))
                continue;
            order.emplace_back(file->written, unflushed.files.size());
            unflushed.files.append({name, lasting});
        }
        std::stable_sort(order.begin(), order.end(), [](const auto &a, const auto &b) {
            return std::pair(a.first.tv_sec, a.first.tv_nsec) <
                   std::pair(b.first.tv_sec, b.first.tv_nsec);
        });
        const auto files = unflushed.files;
        for (qsizetype i = 0; i < files.size(); ++i)
            unflushed.files[i] = files.at(order[size_t(i)].second);
        return unflushed;
    }

private:
    /// A file, held open so that its number is given to no other.
    struct HeldFile
    {
        int descriptor;
        ino_t inode = 0;
        timespec written = {};

        explicit HeldFile(int opened)
            : descriptor(opened)
        {}
        ~HeldFile() { ::close(descriptor); }
        HeldFile(const HeldFile &) = delete;
        HeldFile &operator=(const HeldFile &) = delete;
    };
    using File = std::shared_ptr<HeldFile>;

    /// Null for a folder, a link, and where nothing is.
    static File fileAt(const QString &path)
    {
        const int descriptor = ::open(QFile::encodeName(path).constData(),
                                      O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (descriptor < 0)
            return nullptr;
        auto file = std::make_shared<HeldFile>(descriptor);
        struct stat status;
        if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
            return nullptr;
        file->inode = status.st_ino;
        file->written = status.st_mtim;
        return file;
    }

    static QStringList namesBelow(const QString &folder) { return treeOf(folder).keys(); }

    void keepNames()
    {
        m_names.clear();
        m_links.clear();
        for (const auto &[name, content] : treeOf(m_folder).asKeyValueRange()) {
            m_names[name] = name.endsWith(u'/') ? nullptr : fileAt(m_folder + u'/' + name);
            if (isLink(content))
                m_links[name] = content;
        }
    }

    void keepBytes(const File &file)
    {
        if (!file)
            return;
        QFile reader;
        if (!reader.open(file->descriptor, QIODevice::ReadOnly))
            qFatal("can't read what is flushed");
        reader.seek(0);
        m_bytes[file->inode] = reader.readAll();
        m_held.append(file);
    }

    const QString m_folder;
    Tree m_links;                     ///< those that last, with where they lead
    QMap<QString, File> m_names;      ///< those that last; null for folders and links
    QHash<ino_t, QByteArray> m_bytes; ///< those that last
    QList<File> m_held;
};

namespace detail {

/// Makes the folder what it was, but for links that are still the same.
inline void loseNames(const QString &folder, const Tree &lasting)
{
    const Tree present = treeOf(folder);
    QStringList names = present.keys();
    std::reverse(names.begin(), names.end()); // what is in a folder, then the folder
    for (const QString &name : names) {
        const QString path = folder + u'/' + name;
        if (lasting.contains(name) && lasting[name] == present[name])
            continue;
        if (!name.endsWith(u'/'))
            QFile::remove(path);
        else if (!lasting.contains(name))
            QDir().rmdir(path);
    }
    for (const auto &[name, content] : lasting.asKeyValueRange()) {
        const QString path = folder + u'/' + name;
        if (name.endsWith(u'/'))
            QDir().mkpath(path);
        else if (isLink(content))
            QFile::link(QFile::decodeName(content.sliced(3)), path);
        else
            put(path, content);
    }
}

} // namespace detail

namespace detail {

/// Databases of SQLite are not written anew from their start, but where a page has changed.
inline bool isWrittenInPages(const QString &name)
{
    return name.endsWith(QStringLiteral(".db")) || name.endsWith(QStringLiteral("-journal"));
}

inline QByteArray halfWritten(const QString &name, const QByteArray &content,
                              const QByteArray &lasting)
{
    const QByteArray half = content.first(content.size() / 2);
    return isWrittenInPages(name) ? half + lasting.mid(half.size()) : half;
}

} // namespace detail

/// Lets the folder lose what was not flushed.
inline void loseUnflushed(const QString &folder, const Unflushed &unflushed, Loss loss)
{
    if (loss == Loss::Names)
        return detail::loseNames(folder, unflushed.lasting);
    auto files = unflushed.files;
    if (loss == Loss::OlderBytes && !files.isEmpty())
        files.removeLast();
    for (const auto &[name, lasting] : files) {
        const QString path = folder + u'/' + name;
        const QByteArray content = contentOf(path);
        put(path, loss == Loss::HalfBytes ? detail::halfWritten(name, content, lasting) : lasting);
    }
}

/// Where a process that is about to be killed leaves word of it.
inline QString unflushedFile(const QString &folder)
{
    return folder + QStringLiteral(".unflushed");
}

inline void tellUnflushed(const QString &folder, const Unflushed &unflushed)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << unflushed.lasting << unflushed.files;
    put(unflushedFile(folder), bytes);
}

/// What was told, which is gone then.
inline Unflushed takeUnflushed(const QString &folder)
{
    Unflushed unflushed;
    const QByteArray bytes = contentOf(unflushedFile(folder));
    QFile::remove(unflushedFile(folder));
    QDataStream stream(bytes);
    stream >> unflushed.lasting >> unflushed.files;
    return unflushed;
}

} // namespace tarnwick::testing
