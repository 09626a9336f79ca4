#pragma once

#include <QList>
#include <QString>

/// The standing promises of the program, and the steps to its first change.
namespace tarnwick::Safety {

/// What the program never does, one sentence each.
const QList<QString> &neverDoes();

struct Step
{
    QString title;
    QString detail;
};

/// What comes before the first change to a library, in order.
const QList<Step> &steps();

} // namespace tarnwick::Safety
