#pragma once

#include <QString>

namespace tarnwick {

/// What follows the last slash once trailing slashes are dropped; "/" for a path of slashes alone.
QString lastPathComponent(const QString &path);

/// What follows the last point of the last component. Empty where that point is the first or the
/// last character of the name, so ".mp3" has no extension.
QString pathExtension(const QString &path);

/// The last component without its extension and the point ahead of it.
QString baseName(const QString &path);

/// `folder` and `name` joined by one slash.
QString joinedPath(const QString &folder, const QString &name);

/// The folder part: all ahead of the last component, without the slash; "/" for one at the root.
QString parentFolder(const QString &path);

/// Without "." and ".." components and doubled slashes, worked out on the text alone (links are not
/// followed). For comparison of paths.
QString standardizedPath(const QString &path);

/// Without one leading slash, if there is one. The common form in which paths of the database, of
/// crates and of the cue vault are compared.
QString withoutLeadingSlash(const QString &path);

} // namespace tarnwick
