#pragma once

#include "foundation/result.h"

#include <QByteArrayView>
#include <QString>

#include <optional>
#include <span>

#include <sys/types.h>

/// Changing what lies on disk. The rules, in the order of their weight:
///
/// 1. Files that are not this program's own (databases, crates, audio) change through `replaceFile`
///    and `replaceItem` alone. At every moment, a power cut included, the path leads to the old
///    bytes or to the new.
/// 2. New bytes come to stand in a hidden temporary ".{name}.twtmp" in the target's folder, and
///    are complete and flushed before the rename that makes them count. Once renamed, the write
///    has succeeded.
/// 3. A write that fails takes its partial temporary away; a failed rename leaves the complete one.
///    A stale temporary is overwritten. A folder of that name is left alone and fails the write.
/// 4. A link stays a link: what it points to is replaced, and the temporary lies beside that.
/// 5. Mode, owner and extended attributes of the target pass to the new file, as far as the system
///    lets this user set them.
/// 6. A move never overwrites, whatever stands at its destination, and a source is removed once its
///    copy is complete, flushed and in place, not before.
/// 7. Only regular files are written. A folder, socket, device or pipe at the target is refused
///    without being opened.
/// 8. Every system call here passes `faultFor` first, so that a test can make the n-th one fail.
///
/// A temporary that another process is filling is neither taken away nor waited for longer than a
/// few seconds; nothing else here waits for anybody. Failures carry the system's words.
namespace tarnwick::platform {

/// How much was copied, folders not counted.
struct CopyTally
{
    qint64 files = 0;  ///< links among them
    quint64 bytes = 0; ///< their sizes, as copied
};

/// Puts the joined parts in the place of the file, which need not exist (its folder must).
Done replaceFile(const QString &path, std::span<const QByteArrayView> parts);
Done replaceFile(const QString &path, QByteArrayView content);

/// Writes over the file in place: neither atomic nor flushed, but not at all where the disk has no
/// room. For this program's own files; those that several processes write are `shared_file`'s.
/// `mode` sets the permission bits, of a file that exists too; without it a new file gets the usual
/// ones.
Done writeFilePlainly(const QString &path, QByteArrayView content,
                      std::optional<mode_t> mode = std::nullopt);
Done writeFilePlainly(const QString &path, std::span<const QByteArrayView> parts,
                      std::optional<mode_t> mode = std::nullopt);

/// Makes a folder and those above it that are missing, each with these permission bits. A folder
/// that exists stays as it is.
Done makeFolders(const QString &path, mode_t mode = 0777);

/// Makes one folder. False where anything stands at the path already.
Result<bool> makeNewFolder(const QString &path, mode_t mode = 0777);

/// Removes a file or a link, never a folder.
Done removeFile(const QString &path);

/// Removes a folder in which nothing is left.
Done removeEmptyFolder(const QString &path);

/// Removes a file, a link or a folder with all that is in it; links are not followed. Stops at the
/// first failure. Nothing at the path is no failure.
Done removeTree(const QString &path);

/// Copies a file, a link or a folder with all that is in it to a path at which nothing stands.
/// Keeps content, names, empty folders, hidden entries, permission bits, times and extended
/// attributes; links stay links. Not flushed. After a failure, what was copied so far stays. The
/// tally, if given, gains what was copied.
Done copyItem(const QString &source, const QString &destination, CopyTally *tally = nullptr);

/// Puts a copy of an item in the place of another, of whatever kind, or where nothing stands. The
/// copy is complete and flushed before it takes the place, in one step; then what stood there is
/// removed. A failure to copy leaves everything as it was.
Done replaceItem(const QString &source, const QString &destination);

/// Moves a file or a link to a path at which nothing stands, not even a dangling link. Within one
/// file system this is a rename, which takes folders too; a folder does not cross file systems.
/// Across them, the copy comes to stand whole, then the source goes; a failed move leaves no copy.
Done moveWithoutReplacing(const QString &source, const QString &destination);

} // namespace tarnwick::platform
