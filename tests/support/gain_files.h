#pragma once

#include "support/tag_builder.h"

/// Audio files as Serato leaves them once it has measured their level.
namespace tarnwick::testing {

/// `autogain` in decibels, as the analysis tag spells it: "-3.2".
inline TagBuilder analysedTag(const QByteArray &autogain)
{
    return TagBuilder().object("Serato Autotags", "\x01\x01" + ("120.00" + zeros(1)) + autogain +
                                                      zeros(1) + "0.000" + zeros(1));
}

inline QByteArray analysedFile(const QByteArray &autogain)
{
    return analysedTag(autogain).file();
}

/// One that bears a gain tag already.
inline QByteArray levelledFile(const QByteArray &autogain)
{
    return analysedTag(autogain).userText("replaygain_track_gain", "1.00 dB").file();
}

} // namespace tarnwick::testing
