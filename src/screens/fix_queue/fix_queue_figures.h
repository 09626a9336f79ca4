#pragma once

#include "analysis/derived.h"
#include "foundation/screen.h"

#include <QList>

#include <optional>
#include <vector>

/// Everything worth fixing in a library.
///
/// A queue can hold tens of thousands of issues, of which a screen shows a dozen: an issue says
/// only what it is about, and its texts are made when they are asked for.
namespace tarnwick::FixQueueFigures {

enum class Kind { Missing, Duplicate, Tag };

enum class Filter { All, Missing, Dupes, Tags, Safe };

struct FilterInfo
{
    Filter filter;
    QString name;  ///< by which the command line knows it
    QString label; ///< on its pill
};

/// In the order of their pills.
const QList<FilterInfo> &filters();

struct Issue
{
    Kind kind = Kind::Missing;
    int severity = 0;  ///< higher is more serious
    bool safe = false; ///< may be fixed without the user's judgement
    size_t index = 0;  ///< of a group among the duplicate groups, else of a track in the result
    std::optional<GenreSuggestion> suggestion = std::nullopt; ///< of a safe tag issue

    bool operator==(const Issue &) const = default;
};

/// What an issue shows.
struct Texts
{
    QString track;
    QString problem;
    QString plan; ///< what would be done about it

    bool operator==(const Texts &) const = default;
};

/// Most serious first; within one severity in the order of the library, of groups the largest
/// first.
std::vector<Issue> issuesOf(const Derived &derived);

bool passes(const Issue &issue, Filter filter);
int safeCount(const std::vector<Issue> &issues);

/// The text of the row's badge, and the stored name of the kind.
QString typeLabel(Kind kind);
QString rawValue(Kind kind);
Texts textsOf(const Issue &issue, const Derived &derived);
/// Where the user decides about it.
Screen jumpOf(const Issue &issue);
/// Whether a command can settle it.
bool isFixable(const Issue &issue, const Derived &derived);

} // namespace tarnwick::FixQueueFigures
