#pragma once

#include "support/tag_builder.h"
#include "tags/geob_files.h"

#include <QTest>

namespace tarnwick::testing {

/// Silence that every reader takes for MPEG audio: 100 frames of 128 kbit/s, 417 bytes each.
inline QByteArray silence()
{
    const QByteArray frame = "\xff\xfb\x90\x44" + QByteArray(413, '\0');
    return frame.repeated(100);
}

inline QByteArray latin1Text(const QByteArray &text)
{
    return zeros(1) + text;
}

/// The columns `version` and `file`: files as other programs write them.
inline void addInteropFiles()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QByteArray>("file");
    for (const int version : {3, 4}) {
        const auto row = [version](const char *name, TagBuilder builder) {
            QTest::addRow("version 2.%d, %s", version, name)
                << version << builder.audio(silence()).file();
        };
        const auto title = [version] {
            return TagBuilder(version).frame("TIT2", latin1Text("A title"));
        };
        row("a title", title());
        row("padding", title().padding(2000));
        row("cues", title()
                        .object("Serato Markers2", "lost")
                        .object("Serato Markers_", "kept")
                        .object("Serato Autotags", "kept too")
                        .padding(10));
        row("objects of others",
            title().frame("GEOB", utf16ObjectPayload("Some notes", "text")).object({}, "nameless"));
        row("artwork", TagBuilder(version)
                           .frame("APIC", zeros(1) + "image/png" + zeros(1) + "\3cover" + zeros(1) +
                                              QByteArray(3'000'000, 'p'))
                           .frame("TIT2", latin1Text("A title")));
        row("a gain", title().userText("REPLAYGAIN_TRACK_GAIN", "9.99 dB").userText("other", "1"));
        row("a frame that nobody knows",
            title().frame("ZZZZ", "data").frame("TPE1", latin1Text("Somebody")));
        // To be dropped by programs that change the tag, and not to be changed at all.
        row("a frame with flags",
            title().frame("TPE1", latin1Text("Somebody"),
                          version == 4 ? QByteArray("\x70\0", 2) : QByteArray("\xe0\0", 2)));
        row("Serato's objects in UTF-16",
            title().frame("GEOB", utf16ObjectPayload("Serato Notes", "wide")));
    }
}

} // namespace tarnwick::testing
