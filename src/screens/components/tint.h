#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tarnwick {

/// The colours by which a figure says how well it stands, for presenters that choose one of them.
/// `Theme.tint` gives the colour.
namespace Tint {
Q_NAMESPACE
QML_ELEMENT

enum Value { Ink, InkSoft, InkFaint, Neutral, Good, Warn, Accent, SoftAccent };
Q_ENUM_NS(Value)

} // namespace Tint

} // namespace tarnwick
