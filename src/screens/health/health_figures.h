#pragma once

#include "analysis/derived.h"
#include "foundation/screen.h"

#include <QList>

/// The triage of a library.
namespace tarnwick::HealthFigures {

/// Something to do next, on the screen that it leads to.
struct Step
{
    QString title;
    QString detail;
    Screen jump = Screen::Health;

    bool operator==(const Step &) const = default;
};

/// How many tracks share a label.
struct Bar
{
    QString label;
    int count = 0;

    bool operator==(const Bar &) const = default;
};

/// At most four, in a fixed order; none for what there is nothing of.
QList<Step> steps(const Derived &derived);

/// The six spellings that occur most, of equal ones the first met first.
QList<Bar> topGenres(const Derived &derived);

/// All six bands of tempo in beats a minute, from the slowest; also those without a track.
QList<Bar> bpmBands(const Derived &derived);

} // namespace tarnwick::HealthFigures
