// Writes the completion of the command line for a shell to standard output.
//
//   completions bash|zsh

#include "cli/completions.h"

#include <cstdio>
#include <cstring>

int main(int argc, char *argv[])
{
    const char *shell = argc == 2 ? argv[1] : "";
    QByteArray script;
    if (std::strcmp(shell, "bash") == 0)
        script = tarnwick::cli::bashCompletion().toUtf8();
    else if (std::strcmp(shell, "zsh") == 0)
        script = tarnwick::cli::zshCompletion().toUtf8();
    if (script.isEmpty()) {
        std::fputs("usage: completions bash|zsh\n", stderr);
        return 2;
    }
    std::fputs(script.constData(), stdout);
    return 0;
}
