#pragma once

#include <QStringList>

class QQmlEngine;

namespace tarnwick {

/// Gives an engine what the components take for granted: where the program's own modules lie, the
/// pictures of icons and shadows, and texts in which an ampersand is one. To be called ahead of the
/// first load, during which these symbols are drawn for the first picture.
void installComponents(QQmlEngine &engine, const QStringList &firstSymbols = {});

} // namespace tarnwick
