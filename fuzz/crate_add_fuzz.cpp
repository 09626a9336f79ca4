// Tracks added to a crate of any content: what stood there stays, and what is added is read again.

#include "fuzz_input.h"
#include "scratch.h"
#include "serato/crate_store.h"
#include "serato/crate_writer.h"
#include "serato/serato_parser.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

/// The entries with those of the paths that they lack behind them.
QStringList joined(QStringList entries, const QStringList &paths)
{
    for (const QString &path : paths) {
        if (const QString entry = CrateStore::normalize(path); !entries.contains(entry))
            entries << entry;
    }
    return entries;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Scratch scratch;
    static const bool isMade = QDir().mkpath(scratch.path(u"_Serato_/Subcrates"_s));
    require(isMade, "a folder for crates");
    const SeratoLibrary::Location location{
        u"Test"_s, QUrl::fromLocalFile(scratch.path(u"_Serato_"_s)), true, true};

    Pieces input(viewOf(data, size));
    QStringList added;
    for (int left = input.below(4); left > 0; --left)
        added << input.text();
    const QString file = scratch.put(u"_Serato_/Subcrates/Set.crate"_s, input.rest());
    const auto before = SeratoParser::parseCrate(file);
    require(before.has_value(), "the crate can be read");

    const QStringList expected = joined(*before, added);
    const auto count = CrateWriter::addTracks(added, u"Set"_s, location);
    require(count == int(expected.size() - before->size()), "how many were added");
    const auto after = SeratoParser::parseCrate(file);
    QStringList read = expected;
    read.removeAll(QString()); // an entry without a path is written, and passed over by readers
    require(after && *after == read, "old and new entries, in their order");
    return 0;
}
