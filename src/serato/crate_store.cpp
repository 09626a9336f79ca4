#include "serato/crate_store.h"

#include "foundation/paths.h"
#include "foundation/text.h"
#include "platform/files.h"
#include "serato/serato_parser.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::CrateStore {

namespace {

LoadedCrate loaded(const QString &file)
{
    QStringList paths = SeratoParser::parseCrate(file).value_or(QStringList());
    for (QString &path : paths)
        path = normalize(path);
    return {baseName(file), QUrl::fromLocalFile(file), paths};
}

} // namespace

QString normalize(const QString &path)
{
    return withoutLeadingSlash(path);
}

QList<LoadedCrate> load(const SeratoLibrary::Location &location)
{
    const QString folder = location.subcratesPath();
    QList<LoadedCrate> crates;
    const QStringList names = platform::listFolder(folder).value_or(QStringList());
    for (const QString &name : names) {
        if (lowerCased(pathExtension(name)) == "crate"_L1)
            crates.append(loaded(joinedPath(folder, name)));
    }
    std::stable_sort(crates.begin(), crates.end(), [](const LoadedCrate &a, const LoadedCrate &b) {
        return lowerCased(a.name) < lowerCased(b.name);
    });
    return crates;
}

} // namespace tarnwick::CrateStore
