#pragma once

#include "demo_random.h"

#include <QString>

#include <span>

namespace tarnwick::demo {

/// A genre, its spellings and its usual tempo. The first spelling is the common one.
struct Genre
{
    std::span<const QStringView> spellings;
    int slowest; ///< beats a minute
    int fastest;
};

/// All genres of the demo world, in an order that plans may rely on.
std::span<const Genre> genres();

// Every name is put together from word lists and syllables; none is meant to be anybody's.

QString artistName(Random &random);
QString songTitle(Random &random);
QString albumTitle(Random &random);
QString labelName(Random &random);
QString personName(Random &random);
QString venueName(Random &random);
QString djComment(Random &random);

/// The end of a title that tells a version, with its leading blank: " (Extended Mix)".
QString versionSuffix(Random &random);

/// A key: mostly in Camelot notation, at times in classical notation.
QString keyText(Random &random);

/// 7 as "07".
inline QString twoDigits(int number)
{
    return QString::number(number).rightJustified(2, u'0');
}

} // namespace tarnwick::demo
