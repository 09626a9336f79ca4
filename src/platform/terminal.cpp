#include "platform/terminal.h"

#include <clocale>
#include <cstdlib>
#include <cstring>

#include <langinfo.h>
#include <unistd.h>

namespace tarnwick::platform {

bool isTerminal(std::FILE *stream)
{
    return ::isatty(::fileno(stream)) == 1;
}

void preferUtf8Locale()
{
    // NOLINTBEGIN(concurrency-mt-unsafe): the first thing that a program does, with no other thread
    std::setlocale(LC_ALL, "");
    if (std::strcmp(::nl_langinfo(CODESET), "UTF-8") == 0)
        return;
    // LC_ALL outweighs the rest; without it, the character type alone decides.
    ::setenv(std::getenv("LC_ALL") ? "LC_ALL" : "LC_CTYPE", "C.UTF-8", 1);
    // NOLINTEND(concurrency-mt-unsafe)
}

} // namespace tarnwick::platform
