#pragma once

#include "library_plan.h"

#include <QStringList>

#include <tl/expected.hpp>

namespace tarnwick::demo {

/// What the tool may do where a library lies already.
enum class Existing { Refuse, SetAside };

struct Options
{
    LibraryWish wish;
    Existing existing = Existing::Refuse;
    QString expectFile; ///< empty: none wanted
    bool help = false;
};

/// The command line without the program's name; or what is wrong with it.
tl::expected<Options, QString> parseOptions(const QStringList &arguments);

QString helpText();

} // namespace tarnwick::demo
