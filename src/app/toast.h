#pragma once

#include "foundation/identity.h"

#include <QString>
#include <QUuid>

namespace tarnwick {

/// A short message at the window's edge.
struct Toast
{
    QUuid id = freshIdentity();
    QString message;
    bool reversible = false; ///< shows the marker and the "Undo" button
    bool isProblem = false;  ///< tells of a refusal or a failure

    bool operator==(const Toast &) const = default;
};

/// Whether the change that a toast reports can be taken back.
enum class Reversible { No, Yes };

} // namespace tarnwick
