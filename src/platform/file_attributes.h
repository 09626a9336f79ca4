#pragma once

#include <sys/stat.h>

namespace tarnwick::platform {

class OpenFile;

/// What a replaced or copied file takes over beside its bytes. An int answered is 0 or the errno
/// value; what the system does not let this user set is left out without a failure.

/// Owner, extended attributes (access lists among them) and permission bits.
int takeOverAttributes(const OpenFile &source, const struct stat &status, const OpenFile &target);

/// The times of the last reading and of the last change.
int takeOverTimes(const struct stat &status, const OpenFile &target);

} // namespace tarnwick::platform
