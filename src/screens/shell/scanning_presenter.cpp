#include "screens/shell/scanning_presenter.h"

#include <chrono>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr std::chrono::milliseconds frame{16};

} // namespace

ScanningPresenter::ScanningPresenter(AppState &app, QObject *parent)
    : QObject(parent)
    , m_app(app)
{
    m_nextFrame.setSingleShot(true);
    m_nextFrame.setInterval(frame);
    connect(&m_nextFrame, &QTimer::timeout, this, &ScanningPresenter::tellNow);
    connect(&app, &AppState::phaseChanged, this, [this] {
        if (!m_nextFrame.isActive())
            m_nextFrame.start();
    });
    tellNow();
}

QString ScanningPresenter::count() const
{
    return u"%1 of %2 tracks"_s.arg(m_progress.processed).arg(m_progress.total);
}

void ScanningPresenter::tellNow()
{
    const auto *scanning = std::get_if<Scanning>(&m_app.phase());
    if (!scanning)
        return;
    m_progress = scanning->progress;
    Q_EMIT changed();
}

} // namespace tarnwick
