#include "screens/shell/coming_soon_presenter.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

QString ComingSoonPresenter::text() const
{
    return u"Phase 1 ships the read-only core — the Serato parser, the library scan, and the "
           "Library score / Health / Library & safety screens, all driven by your real library. "
           "%1 arrives in a later phase and will read from the same store, so every number here "
           "already accounts for it."_s.arg(title());
}

} // namespace tarnwick
