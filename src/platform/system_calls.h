#pragma once

#include "platform/fault_gate.h"

#include <QByteArray>
#include <QByteArrayList>

#include <sys/stat.h>

/// The system calls behind `files_write`, each passed by the fault gate and repeated where a signal
/// broke it off. An int answered is 0 or the errno value. Paths are the system's own bytes, so that
/// names that are no UTF-8 survive a copy.
namespace tarnwick::platform::calls {

/// The folder part of a path, its slash included; empty for a bare name.
QByteArray folderPartOf(const QByteArray &path);
/// The hidden temporary that stands beside a file while it is written: ".{name}.twtmp".
QByteArray temporaryBeside(const QByteArray &path);

/// What the gate answers for a path; ENOENT for one that holds NUL, which no system call can state.
int gate(FileOperation operation, const QByteArray &path);

/// Of the entry itself: links are not followed.
int statusOf(const QByteArray &path, struct stat &status);
/// All entries but "." and "..", in the order of their bytes.
int listFolder(const QByteArray &path, QByteArrayList &names);
int makeFolder(const QByteArray &path, mode_t mode);
int setMode(const QByteArray &path, mode_t mode);
int removeEntry(const QByteArray &path);
int removeFolder(const QByteArray &path);
int renameEntry(const QByteArray &from, const QByteArray &to);
/// EEXIST where anything stands at `to`.
int renameWithoutReplacing(const QByteArray &from, const QByteArray &to);
/// Lets two entries change places in one step.
int exchangeEntries(const QByteArray &one, const QByteArray &other);
int readLink(const QByteArray &path, QByteArray &target);
int makeLink(const QByteArray &target, const QByteArray &path);
/// A pipe or socket like the one that the status describes; nothing is opened.
int makeSpecial(const QByteArray &path, const struct stat &like);
/// Brings the entries of the folder that holds the path to the device. A file system that can't is
/// no failure.
int flushFolderOf(const QByteArray &path);

} // namespace tarnwick::platform::calls
