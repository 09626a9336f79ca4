#pragma once

#include "fuzz_input.h"
#include "safety/store_file.h"

namespace tarnwick::fuzzing {

/// A store that is a list of records: what can be read is written, and read as the same again.
template <typename Record>
void checkStoreList(QByteArrayView input)
{
    const auto list = StoreFile::decoded<Record>(input.toByteArray());
    if (!list)
        return;
    noteRead();
    require(list->texts.size() == list->records.size(), "a text for each record");
    for (qsizetype i = 0; i < list->records.size(); ++i)
        require(StoreFile::encoded(list->records.at(i)) == list->texts.at(i), "its own text");
    const QByteArray file = StoreFile::listOf(list->texts);
    const auto again = StoreFile::decoded<Record>(file);
    require(again.has_value(), "what is written can be read");
    require(again->records == list->records, "every record comes back");
    require(StoreFile::listOf(again->texts) == file, "byte for byte");
}

} // namespace tarnwick::fuzzing
