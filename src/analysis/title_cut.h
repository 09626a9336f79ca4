#pragma once

#include <QString>

#include <string>

/// How a title tells which cut of a song it is: "Song (Club Mix)" is the club mix of "song".
///
/// 1. The cut follows from keywords found anywhere in the lower-cased title. There is no notion of
///    words: "alive" is live. Of several keywords the last in the table wins, so that a "radio
///    edit" is an "Edit".
/// 2. The base is what remains of the title without the part that begins at the first opening
///    bracket, and then without the part that begins at the first dash ahead of a keyword. Each
///    part takes the white space ahead of it along and ends at a line break; what stands behind the
///    line break stays.
namespace tarnwick {

/// The label of the cut that a lower-cased title tells of; "Original" where it tells of none.
const QString &cutOf(QStringView loweredTitle);

/// Reduces the lower-cased title that stands in `text` from `start` to its end to the base.
void reduceToBase(std::u16string &text, size_t start = 0);

/// Both at once, for a title as it stands.
struct BaseAndCut
{
    QString base; ///< lower-cased; may be empty
    QString cut;

    bool operator==(const BaseAndCut &) const = default;
};

BaseAndCut baseAndCut(const QString &title);

/// `text` with an upper-case letter at the start of each word that begins with a letter; the rest
/// stands. Words are parted by white space alone.
QString capitalised(const QString &text);

} // namespace tarnwick
