#include "serato/crate_writer.h"

#include "foundation/paths.h"
#include "platform/files.h"
#include "platform/files_write.h"
#include "serato/crate_store.h"
#include "serato/record_writer.h"
#include "serato/serato_parser.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace tarnwick::CrateWriter {

namespace {

// Frozen: Serato looks for exactly this text.
const QString crateVersion = u"1.0/Serato ScratchLive Crate"_s;

QByteArray crateFile(const QStringList &paths)
{
    QByteArray bytes;
    appendTextRecord(bytes, "vrsn"_tag, crateVersion);
    for (const QString &path : paths) {
        QByteArray entry;
        appendTextRecord(entry, "ptrk"_tag, path);
        appendRecord(bytes, "otrk"_tag, entry);
    }
    return bytes;
}

/// Appends what the entries lack; returns how many those were.
int addMissing(QStringList &entries, const QStringList &paths)
{
    QSet<QString> present(entries.begin(), entries.end());
    int added = 0;
    for (const QString &path : paths) {
        const QString entry = CrateStore::normalize(path);
        if (present.contains(entry))
            continue;
        present.insert(entry);
        entries.append(entry);
        ++added;
    }
    return added;
}

} // namespace

QUrl crateUrl(const QString &name, const SeratoLibrary::Location &location)
{
    return QUrl::fromLocalFile(joinedPath(location.subcratesPath(), name + u".crate"_s));
}

Result<int> addTracks(const QStringList &paths, const QString &name,
                      const SeratoLibrary::Location &location)
{
    if (const Done made = platform::makeFolders(location.subcratesPath()); !made)
        return tl::unexpected(made.error());
    const QString file = crateUrl(name, location).toLocalFile();
    QStringList entries = SeratoParser::parseCrate(file).value_or(QStringList());
    const int added = addMissing(entries, paths);
    if (const Done written = platform::replaceFile(file, crateFile(entries)); !written)
        return tl::unexpected(written.error());
    return added;
}

} // namespace tarnwick::CrateWriter
