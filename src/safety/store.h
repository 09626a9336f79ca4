#pragma once

#include <QString>

/// Where this program keeps what is its own: one folder of the user's, outside every library, so
/// that a broken or deleted library can't take its safety net along.
///
/// The names are frozen, since they stand on users' disks:
///
///     Tarnwick/              the data folder, for its owner's eyes alone
///       Snapshots/           a folder for each snapshot, with its meta.json
///       Holding/             a folder for each held file, and manifest.json
///       changelog.json
///       cuevault.json
///       signal.json
namespace tarnwick::Store {

/// The data folder, which is made when it is first asked for. That it can't be made is no failure
/// here: what needs it fails by itself later. The same holds for the folders below.
QString root();

/// Made again at each call if they have gone.
QString snapshots();
QString holding();

/// Paths only; nothing is made.
QString changeLog();
QString cueVault();
QString signalConfig();
QString holdingManifest();

/// True for a name that leads to an entry of a folder and nowhere else: not empty, no slash, and
/// not a way up. What stands in a store may have been written by anybody, and folders are removed
/// by such names.
bool isPlainName(const QString &name);

} // namespace tarnwick::Store
