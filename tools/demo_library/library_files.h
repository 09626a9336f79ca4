#pragma once

#include "demo_options.h"
#include "library_plan.h"

#include <tl/expected.hpp>

namespace tarnwick::demo {

// How files come into being:
// 1. Nothing is written if a library lies there, or a file at any planned path, unless forced.
// 2. A present library is never deleted: forced, it is renamed.
// 3. Audio first, then the library, so that the database tells the sizes as written.

/// Writes all files of the plan and notes the sizes of the audio files in it; or tells what failed.
tl::expected<void, QString> writeLibrary(LibraryPlan &plan, const LibraryWish &wish,
                                         Existing existing);

/// Writes one file whole, in place of one that is there.
tl::expected<void, QString> writeFile(const QString &path, const QByteArray &bytes);

} // namespace tarnwick::demo
