#pragma once

#include <cstdio>

namespace tarnwick::platform {

/// Whether a person watches the stream.
bool isTerminal(std::FILE *stream);

/// Makes the process run in a UTF-8 locale where the environment names none: Qt expects one and
/// would complain on standard error. To be called ahead of any application object.
void preferUtf8Locale();

} // namespace tarnwick::platform
