#pragma once

#include <QString>

/// The one way in which byte counts are told to people.
namespace tarnwick::ByteFmt {

/// "0 MB" for 0; else the largest of KB, MB and GB (of 1000) that gives at least 1, and KB below
/// that: "812 KB", "5.4 MB", "1.25 GB". Trailing zeros are dropped; the decimal mark is the user's.
QString string(quint64 bytes);

} // namespace tarnwick::ByteFmt
