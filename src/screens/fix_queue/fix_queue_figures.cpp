#include "screens/fix_queue/fix_queue_figures.h"

#include "foundation/byte_format.h"
#include "screens/components/track_line_figures.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::FixQueueFigures {

namespace {

// The sources are gone through in the order of their severity.
constexpr int missingSeverity = 100;
constexpr int duplicateSeverity = 60;
constexpr int sureTagSeverity = 30;
constexpr int openTagSeverity = 20;

void addMissing(std::vector<Issue> &issues, const std::vector<ScannedTrack> &tracks)
{
    for (size_t i = 0; i < tracks.size(); ++i) {
        if (tracks[i].isMissing())
            issues.push_back({Kind::Missing, missingSeverity, false, i});
    }
}

/// Sure ones ahead of open ones.
void addTags(std::vector<Issue> &issues, const Derived &derived)
{
    const std::vector<ScannedTrack> &tracks = derived.result().tracks;
    std::vector<Issue> open;
    for (size_t i = 0; i < tracks.size(); ++i) {
        if (!tracks[i].isUntagged())
            continue;
        const auto suggestion = derived.genreSuggestion(tracks[i]);
        if (suggestion && suggestion->isSure())
            issues.push_back({Kind::Tag, sureTagSeverity, true, i, suggestion});
        else
            open.push_back({Kind::Tag, openTagSeverity, false, i});
    }
    issues.insert(issues.end(), open.begin(), open.end());
}

Texts duplicateTexts(const DuplicateGroup &group)
{
    return {
        group.members.empty() ? QString() : TrackLineText::first(group.members.front().track),
        u"%1 copies · %2"_s.arg(group.members.size()).arg(ByteFmt::string(group.reclaimableBytes)),
        u"Keep best, hold the rest 30 days"_s};
}

} // namespace

const QList<FilterInfo> &filters()
{
    static const QList<FilterInfo> all = {
        {Filter::All, u"all"_s, u"All"_s},
        {Filter::Missing, u"missing"_s, u"Missing"_s},
        {Filter::Dupes, u"dupes"_s, u"Duplicates"_s},
        {Filter::Tags, u"tags"_s, u"Tags"_s},
        {Filter::Safe, u"safe"_s, u"Safe to automate"_s},
    };
    return all;
}

std::vector<Issue> issuesOf(const Derived &derived)
{
    std::vector<Issue> issues;
    addMissing(issues, derived.result().tracks);
    for (size_t i = 0; i < derived.duplicateGroups.size(); ++i)
        issues.push_back({Kind::Duplicate, duplicateSeverity, true, i});
    addTags(issues, derived);
    return issues;
}

bool passes(const Issue &issue, Filter filter)
{
    switch (filter) {
    case Filter::All:
        return true;
    case Filter::Missing:
        return issue.kind == Kind::Missing;
    case Filter::Dupes:
        return issue.kind == Kind::Duplicate;
    case Filter::Tags:
        return issue.kind == Kind::Tag;
    case Filter::Safe:
        return issue.safe;
    }
    return false;
}

int safeCount(const std::vector<Issue> &issues)
{
    return int(
        std::count_if(issues.begin(), issues.end(), [](const Issue &issue) { return issue.safe; }));
}

QString typeLabel(Kind kind)
{
    switch (kind) {
    case Kind::Missing:
        return u"Missing"_s;
    case Kind::Duplicate:
        return u"Duplicate"_s;
    case Kind::Tag:
        return u"Tag"_s;
    }
    return {};
}

QString rawValue(Kind kind)
{
    return typeLabel(kind).toLower();
}

Texts textsOf(const Issue &issue, const Derived &derived)
{
    if (issue.kind == Kind::Duplicate)
        return duplicateTexts(derived.duplicateGroups[issue.index]);
    const QString track = TrackLineText::first(derived.result().tracks[issue.index].track);
    if (issue.kind == Kind::Missing)
        return {track, u"File not found on disk"_s, u"Relink to its real location"_s};
    if (!issue.suggestion)
        return {track, u"No genre"_s, u"Needs a genre — your call"_s};
    return {track, u"No genre"_s,
            u"Set to %1 (%2%)"_s.arg(issue.suggestion->genre,
                                     QString::number(issue.suggestion->confidence))};
}

Screen jumpOf(const Issue &issue)
{
    switch (issue.kind) {
    case Kind::Missing:
        return Screen::Missing;
    case Kind::Duplicate:
        return Screen::Duplicates;
    case Kind::Tag:
        return Screen::TrackId;
    }
    return Screen::FixQueue;
}

bool isFixable(const Issue &issue, const Derived &derived)
{
    if (issue.kind == Kind::Duplicate)
        return !derived.duplicateGroups[issue.index].members.empty();
    return issue.suggestion.has_value();
}

} // namespace tarnwick::FixQueueFigures
