#pragma once

#include "demo_random.h"
#include "library_plan.h"

#include <QByteArray>

namespace tarnwick::demo {

// The data of the objects that Serato leaves in an ID3v2 tag, with plausible contents.

/// "Serato Markers2": cues with names and colours, as base64 text in a block of fixed length.
QByteArray markers2Data(Random &random);

/// "Serato Markers_": the older form, fourteen slots of 22 bytes.
QByteArray olderMarkersData(Random &random);

/// "Serato BeatGrid": one marker, or two where the tempo changes.
QByteArray beatGridData(const QString &bpm, Random &random);

/// "Serato Autotags": tempo, gain found by analysis, gain set by hand, as texts.
QByteArray autotagsData(const QString &bpm, int autogain);

/// "Serato Overview": the waveform picture.
QByteArray overviewData(Random &random);

/// Thousandths as a text with three decimals: -4200 gives "-4.200".
QByteArray decimalText(int thousandths);

} // namespace tarnwick::demo
