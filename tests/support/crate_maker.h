#pragma once

#include "serato/loaded_crate.h"

namespace tarnwick::testing {

inline LoadedCrate crate(const QString &name, const QStringList &paths)
{
    using namespace Qt::StringLiterals;
    return {name, QUrl::fromLocalFile(u"/Subcrates/"_s + name + u".crate"_s), paths};
}

/// A crate of the paths "first" to below "end", written as numbers.
inline LoadedCrate crateOfNumbers(const QString &name, int first, int end)
{
    QStringList paths;
    for (int number = first; number < end; ++number)
        paths << QString::number(number);
    return crate(name, paths);
}

} // namespace tarnwick::testing
