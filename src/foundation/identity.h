#pragma once

#include <QUuid>

namespace tarnwick {

/// A fresh identity for a value of this process. Drawn from a counter behind one random start, so
/// that a hundred thousand of them cost next to nothing. Safe on any thread.
QUuid freshIdentity();

} // namespace tarnwick
