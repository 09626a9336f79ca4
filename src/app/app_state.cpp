#include "app/app_state.h"

#include "foundation/paths.h"
#include "platform/environment.h"

#include <QTimer>

#include <chrono>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr std::chrono::milliseconds toastLife{4200};

} // namespace

AppState::AppState(Environment environment, QObject *parent)
    : QObject(parent)
    , m_environment(environment)
{
    // Held files that have expired go before anything else is looked at.
    m_holding.purgeExpired();
    // First, so that a store which gets ready in between is seen by at least one of the two.
    syncSafetyOnceLoaded();
    syncSafety();
    m_locations = SeratoLibrary::discover();
    m_seratoRunning = SeratoLibrary::isSeratoRunning();
    if (environmentValue("TARNWICK_AUTOSCAN") != u"1"_s)
        return;
    if (const auto location = defaultLocation())
        startScan(*location);
}

AppState::~AppState() = default;

std::optional<QString> AppState::environmentValue(const char *name) const
{
    if (m_environment == Environment::Ignored)
        return std::nullopt;
    return platform::environmentVariable(name);
}

std::shared_ptr<const Derived> AppState::derived() const
{
    if (m_result && !m_derived)
        m_derived = std::make_shared<Derived>(m_result, m_ignoredDupeKeys);
    return m_derived;
}

std::optional<SeratoLibrary::Location> AppState::defaultLocation() const
{
    const QString home = standardizedPath(SeratoLibrary::homeLibrary());
    for (const SeratoLibrary::Location &location : m_locations) {
        if (standardizedPath(location.folderPath()) == home)
            return location;
    }
    for (const SeratoLibrary::Location &location : m_locations) {
        if (location.hasDatabase && location.isOnline)
            return location;
    }
    return std::nullopt;
}

void AppState::setSelection(Screen screen)
{
    if (m_selection == screen)
        return;
    m_selection = screen;
    Q_EMIT selectionChanged();
}

void AppState::refreshEnvironment()
{
    m_locations = SeratoLibrary::discover();
    Q_EMIT locationsChanged();
    m_seratoRunning = SeratoLibrary::isSeratoRunning();
    Q_EMIT seratoRunningChanged();
}

void AppState::showToast(const QString &message, Reversible reversible)
{
    show({.message = message, .reversible = reversible == Reversible::Yes});
}

void AppState::showProblem(const QString &message)
{
    show({.message = message, .isProblem = true});
}

void AppState::show(const Toast &toast)
{
    m_toast = toast;
    const QUuid shown = m_toast->id;
    // Precise: a coarse timer may end it a twentieth early.
    QTimer::singleShot(toastLife, Qt::PreciseTimer, this, [this, shown] {
        if (m_toast && m_toast->id == shown) {
            m_toast.reset();
            Q_EMIT toastChanged();
        }
    });
    Q_EMIT toastRaised(*m_toast);
    Q_EMIT toastChanged();
}

void AppState::setPhase(Phase phase)
{
    if (m_phase == phase)
        return;
    m_phase = std::move(phase);
    Q_EMIT phaseChanged();
}

void AppState::setBusy(const std::optional<QString> &label)
{
    m_busy = label;
    Q_EMIT busyChanged();
}

void AppState::libraryHasChanged(std::shared_ptr<const Derived> derived)
{
    dropFigures();
    m_derived = std::move(derived);
    if (m_gatherings > 0)
        m_libraryToTell = true;
    else
        Q_EMIT libraryChanged();
}

void AppState::dropFigures()
{
    m_derived.reset();
    m_hygiene.drop();
    m_versions.drop();
    m_trackMap.reset();
    m_ownedMusic.reset();
}

void AppState::endGathering()
{
    if (--m_gatherings > 0)
        return;
    if (std::exchange(m_libraryToTell, false))
        Q_EMIT libraryChanged();
    if (std::exchange(m_safetyToSync, false))
        syncSafety();
}

void AppState::taskEnded()
{
    if (--m_pendingTasks == 0)
        Q_EMIT becameIdle();
}

} // namespace tarnwick
