#include "library_files.h"

#include "audio_file.h"
#include "serato_writer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwick::demo {

using namespace Qt::StringLiterals;

namespace {

using Written = tl::expected<void, QString>;

enum class Replace : int { No = O_EXCL, Yes = O_TRUNC };

tl::unexpected<QString> systemFailure(const QString &path, int error)
{
    return tl::unexpected<QString>(path + u": "_s + qt_error_string(error));
}

/// A dangling link is there too.
bool isThere(const QString &path)
{
    struct stat status;
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0;
}

/// 0, or the system's number of the error.
int writeAll(int file, const QByteArray &bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const auto count =
            ::write(file, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        done += count < 0 ? 0 : count;
    }
    return 0;
}

Written writeNewFile(const QString &path, const QByteArray &bytes, Replace replace)
{
    const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | static_cast<int>(replace);
    const int file = ::open(QFile::encodeName(path).constData(), flags, 0644);
    if (file < 0) {
        return systemFailure(path, errno);
    }
    int error = writeAll(file, bytes);
    if (::close(file) != 0 && error == 0) {
        error = errno;
    }
    return error == 0 ? Written() : systemFailure(path, error);
}

/// Writes files of one run and makes their folders as they are needed.
class FileMaker
{
public:
    explicit FileMaker(Replace replace)
        : m_replace(replace)
    {}

    Written operator()(const QString &path, const QByteArray &bytes)
    {
        const QString folder = path.left(path.lastIndexOf(u'/'));
        if (!m_folders.contains(folder)) {
            if (!QDir().mkpath(folder)) {
                return tl::unexpected(folder + u": the folder can't be made"_s);
            }
            m_folders.insert(folder);
        }
        return writeNewFile(path, bytes, m_replace);
    }

private:
    Replace m_replace;
    QSet<QString> m_folders;
};

QString placeOf(const TrackPlan &track)
{
    return u'/' + (track.fate == Fate::Moved ? track.movedTo : track.path);
}

Written refuseOccupiedPlaces(const LibraryPlan &plan)
{
    for (const TrackPlan &track : plan.tracks) {
        if (isThere(placeOf(track))) {
            return tl::unexpected(placeOf(track) + u" is there already; --force writes over it"_s);
        }
    }
    return {};
}

/// Renames a present library to the first free of "_Serato_ set aside 1" and so on.
Written setAside(const QString &folder)
{
    QString aside;
    for (int number = 1; aside.isEmpty() || isThere(aside); ++number) {
        aside = folder + u" set aside %1"_s.arg(number);
    }
    if (!QFile::rename(folder, aside)) {
        return tl::unexpected(folder + u" can't be renamed to "_s + aside);
    }
    return {};
}

Written makeRoom(const LibraryPlan &plan, const QString &folder, Existing existing)
{
    if (existing == Existing::Refuse) {
        return isThere(folder)
                   ? tl::unexpected(folder + u" is there already; --force sets it aside"_s)
                   : refuseOccupiedPlaces(plan);
    }
    return isThere(folder) ? setAside(folder) : Written();
}

Written writeAudio(QList<TrackPlan> &tracks, quint64 seed, FileMaker &make)
{
    constexpr quint64 firstAudioStream = 1000;
    for (qsizetype i = 0; i < tracks.size(); ++i) {
        TrackPlan &track = tracks[i];
        if (track.fate == Fate::Gone) {
            continue;
        }
        const Random random(seed, firstAudioStream + static_cast<quint64>(i));
        const QByteArray bytes = audioFile(track, random);
        track.fileBytes = static_cast<quint64>(bytes.size());
        if (Written written = make(placeOf(track), bytes); !written) {
            return written;
        }
    }
    return {};
}

/// The small files of the folder, the database excepted.
QList<std::pair<QString, QByteArray>> companions(const LibraryPlan &plan)
{
    QList<std::pair<QString, QByteArray>> files;
    for (const CratePlan &crate : plan.crates) {
        files.append({u"Subcrates/%1.crate"_s.arg(crate.name), crateFile(crate)});
    }
    if (!plan.crates.isEmpty()) {
        const CratePlan &first = plan.crates.first();
        const QStringList found = first.paths.first(std::min<qsizetype>(first.paths.size(), 10));
        files.append(
            {u"SmartCrates/Always %1.scrate"_s.arg(first.name), smartCrateFile(first.name, found)});
        files.append({u"neworder.pref"_s, crateOrderFile(plan.crates)});
        files.append({u"window.pref"_s, "x=0\ny=25\nwidth=1440\nheight=875\n"});
    }
    for (const SessionPlan &session : plan.sessions) {
        files.append({u"History/Sessions/%1.session"_s.arg(session.number), sessionFile(session)});
    }
    return files;
}

Written writeSeratoFolder(const LibraryPlan &plan, const QString &folder, FileMaker &make)
{
    for (const auto &[name, bytes] : companions(plan)) {
        if (Written written = make(folder + u'/' + name, bytes); !written) {
            return written;
        }
    }
    if (!QDir().mkpath(folder + u"/Subcrates"_s)) {
        return tl::unexpected(folder + u"/Subcrates: the folder can't be made"_s);
    }
    return make(folder + u"/database V2"_s, databaseFile(plan.tracks));
}

} // namespace

tl::expected<void, QString> writeFile(const QString &path, const QByteArray &bytes)
{
    return writeNewFile(path, bytes, Replace::Yes);
}

tl::expected<void, QString> writeLibrary(LibraryPlan &plan, const LibraryWish &wish,
                                         Existing existing)
{
    const QString folder = wish.home + u"/Music/_Serato_"_s;
    if (Written room = makeRoom(plan, folder, existing); !room) {
        return room;
    }
    FileMaker make(existing == Existing::Refuse ? Replace::No : Replace::Yes);
    if (Written written = writeAudio(plan.tracks, wish.seed, make); !written) {
        return written;
    }
    return writeSeratoFolder(plan, folder, make);
}

} // namespace tarnwick::demo
