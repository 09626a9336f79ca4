#pragma once

#include "support/serato_builder.h"
#include "support/tag_builder.h"
#include "support/test_folder.h"

#include <QStringList>

/// What a library is made of that goes to a gig: crates, and files with what makes them playable.
namespace tarnwick::testing {

/// Writes a crate into the home library of an AppFixture.
inline void writeHomeCrate(const TestFolder &root, const QString &name, const QStringList &paths)
{
    QByteArray bytes = crateVersion();
    for (const QString &path : paths)
        bytes += crateEntry(path);
    root.write(QStringLiteral("home/Music/_Serato_/Subcrates/%1.crate").arg(name), bytes);
}

/// The tag that Serato's analysis leaves, with a gain in decibels.
inline QByteArray analysed(const QByteArray &gain)
{
    return "\x01\x01"
           "128.00" +
           zeros(1) + gain + zeros(1);
}

/// A file with cues and a grid; with a gain where one is given.
inline QByteArray preparedFile(const QByteArray &gain = {})
{
    TagBuilder tag;
    tag.object("Serato Markers2").object("Serato BeatGrid");
    if (!gain.isEmpty())
        tag.object("Serato Autotags", analysed(gain));
    return tag.file();
}

/// A database's fields of a track that lacks nothing.
inline QByteArrayList preparedFields(const QString &title)
{
    return {textRecord("tsng", title), textRecord("tkey", u"8A"), textRecord("tbit", u"320.0kbps")};
}

} // namespace tarnwick::testing
