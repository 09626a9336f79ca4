#pragma once

#include "platform/files_write.h"

#include <QByteArray>

namespace tarnwick::platform {

enum class Flush { No, Yes };

/// The step that copies and moves share: one entry, a folder with all below it. Every file is
/// flushed if asked for. A pipe or socket is made anew, never opened. Answers 0 or an errno value;
/// what was copied until then stays.
int copyEntry(const QByteArray &source, const QByteArray &destination, Flush flush,
              CopyTally *tally = nullptr);

} // namespace tarnwick::platform
