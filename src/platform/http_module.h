#pragma once

#include "platform/http.h"

/// The part that talks HTTP is a module of its own, loaded when the first request is made: the
/// libraries that it needs would add half again to the time in which the command line starts.
namespace tarnwick::platform {

/// What the module does for `sendHttp`.
using HttpSender = Result<HttpReply> (*)(const HttpRequest &request);

/// The one function that the module exports: it gives the sender.
using HttpModuleEntry = HttpSender (*)();
inline constexpr char httpModuleEntryName[] = "tarnwickHttpSender";

/// Where the module lies, from the folder of the executable. The names are frozen: installed
/// programs have the same layout as built ones.
inline constexpr char16_t httpModulePlace[] = u"../lib/tarnwick/modules/tarnwick_http";

} // namespace tarnwick::platform
