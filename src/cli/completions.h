#pragma once

#include <QString>

/// Completion of the program's arguments in a shell, made from the command table.
namespace tarnwick::cli {

QString bashCompletion();
QString zshCompletion();

} // namespace tarnwick::cli
