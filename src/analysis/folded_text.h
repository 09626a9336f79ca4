#pragma once

#include <QStringView>

#include <string>

/// Putting keys together in lower case, in one buffer that is used again for every track. What is
/// appended equals lowerCased() of the text, without a copy made for each text of plain ASCII.
namespace tarnwick {

/// Appends `text` in lower case.
void appendLowerCased(std::u16string &key, QStringView text);

/// Appends `text` in lower case, then without the white space and line breaks at both its ends.
void appendLowerCasedTrimmed(std::u16string &key, QStringView text);

} // namespace tarnwick
