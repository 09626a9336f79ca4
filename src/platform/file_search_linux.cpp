// The live walk that stands in for a file index. Everything in the inner loop works on the bytes
// that the kernel gives: half a million names must go by in a fraction of a second.

#include "foundation/paths.h"
#include "platform/file_search.h"
#include "platform/files.h"
#include "platform/mounts.h"

#include <QSet>

#include <algorithm>
#include <memory>
#include <string_view>
#include <vector>

#include <cerrno>
#include <cstring>

#include <dirent.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace tarnwick::platform {

namespace {

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return uchar(c) < 0x80; });
}

char asciiLower(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
}

/// A text looked for in names, letter case ignored.
class Needle
{
public:
    explicit Needle(const QString &text)
        : m_text(text.toLower())
        , m_bytes(m_text.toUtf8())
    {}

    /// `folded` is `name` with its ASCII letters in lower case.
    bool isIn(std::string_view name, std::string_view folded) const
    {
        if (isAscii(name))
            return contains(folded);
        // Other letters can take another number of bytes in the other case.
        return QString::fromUtf8(name.data(), qsizetype(name.size())).toLower().contains(m_text);
    }

private:
    bool contains(std::string_view folded) const
    {
        return ::memmem(folded.data(), folded.size(), m_bytes.constData(), size_t(m_bytes.size()));
    }

    QString m_text;
    QByteArray m_bytes;
};

class Walk
{
public:
    Walk(const FileSearch &search, const QStringList &texts)
        : m_leftOut(Mounts::now().thatAreNoDisks())
        , m_needles(texts.begin(), texts.end())
        , m_found(texts.size())
    {
        for (const QString &folder : search.leftOut)
            m_leftOut.insert(standardizedPath(folder).toUtf8());
        for (const QString &extension : search.extensions)
            m_endings.push_back('.' + extension.toUtf8());
        m_folded.resize(NAME_MAX + 1);
    }

    void below(const QByteArray &root)
    {
        m_waiting.push_back(root);
        while (!m_waiting.empty()) {
            const QByteArray folder = std::move(m_waiting.back());
            m_waiting.pop_back();
            list(folder);
        }
    }

    QList<QStringList> found()
    {
        for (QStringList &paths : m_found) {
            std::sort(paths.begin(), paths.end());
            paths.removeDuplicates();
        }
        return m_found;
    }

private:
    void list(const QByteArray &folder)
    {
        const auto close = [](DIR *open) { ::closedir(open); };
        const std::unique_ptr<DIR, decltype(close)> open(::opendir(folder.constData()), close);
        if (!open)
            return;
        // cppcheck-suppress readdirCalled ; no other thread has this stream
        // NOLINTNEXTLINE(concurrency-mt-unsafe)
        while (const dirent *entry = ::readdir(open.get())) {
            const std::string_view name(entry->d_name);
            if (isFolder(*entry, folder))
                enter(folder, name);
            else if (hasWantedEnding(name))
                test(folder, name, *entry);
        }
    }

    static QByteArray joined(const QByteArray &folder, std::string_view name)
    {
        QByteArray path;
        path.reserve(folder.size() + qsizetype(name.size()) + 1);
        path += folder;
        if (!folder.endsWith('/'))
            path += '/';
        return path.append(name.data(), qsizetype(name.size()));
    }

    /// Some file systems don't say what an entry is: then its own facts do, links not followed.
    static bool isFolder(const dirent &entry, const QByteArray &folder)
    {
        if (entry.d_type != DT_UNKNOWN)
            return entry.d_type == DT_DIR;
        struct stat status;
        return ::lstat(joined(folder, entry.d_name).constData(), &status) == 0 &&
               S_ISDIR(status.st_mode);
    }

    void enter(const QByteArray &folder, std::string_view name)
    {
        if (name.front() == '.')
            return;
        QByteArray path = joined(folder, name);
        if (!m_leftOut.contains(path))
            m_waiting.push_back(std::move(path));
    }

    bool hasWantedEnding(std::string_view name)
    {
        const std::string_view folded = foldedName(name);
        return std::any_of(m_endings.begin(), m_endings.end(), [&](const QByteArray &ending) {
            return folded.size() > size_t(ending.size()) &&
                   folded.ends_with(std::string_view(ending.constData(), size_t(ending.size())));
        });
    }

    std::string_view foldedName(std::string_view name)
    {
        std::transform(name.begin(), name.end(), m_folded.begin(), asciiLower);
        return {m_folded.data(), name.size()};
    }

    void test(const QByteArray &folder, std::string_view name, const dirent &entry)
    {
        const std::string_view folded(m_folded.data(), name.size());
        for (size_t i = 0; i < m_needles.size(); ++i) {
            if (!m_needles[i].isIn(name, folded))
                continue;
            const QByteArray path = joined(folder, name);
            if (entry.d_type == DT_REG || isRegularFile(QString::fromUtf8(path)))
                m_found[qsizetype(i)].append(QString::fromUtf8(path));
        }
    }

    QSet<QByteArray> m_leftOut;
    std::vector<Needle> m_needles;
    std::vector<QByteArray> m_endings;
    QList<QStringList> m_found;
    std::vector<QByteArray> m_waiting;
    std::vector<char> m_folded;
};

} // namespace

QList<QStringList> findFiles(const FileSearch &search, const QStringList &texts)
{
    Walk walk(search, texts);
    for (const QString &root : search.roots)
        walk.below(root.toUtf8());
    return walk.found();
}

} // namespace tarnwick::platform
