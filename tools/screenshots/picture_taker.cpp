#include "screenshots/picture_taker.h"

#include "screens/gig_check/gig_check_presenter.h"
#include "screens/shell/scanning_presenter.h"
#include "screenshots/export_states.h"
#include "screenshots/gig_run_states.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QQuickWindow>
#include <QThread>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// How far the scan has come on its picture.
constexpr double shownFraction = 0.4;

bool fail(const QString &message)
{
    std::fprintf(stderr, "screenshots: %s\n", qUtf8Printable(message));
    return false;
}

} // namespace

PictureTaker::PictureTaker(const QString &folder, const QSize &size)
    : m_folder(folder)
    , m_app(AppState::Environment::Ignored)
    , m_window(m_app)
{
    QDir().mkpath(folder);
    m_window.window()->resize(size);
    m_window.show();
}

bool PictureTaker::take(const QString &only, bool withStates)
{
    m_only = only;
    m_withStates = withStates;
    const bool isView = only == u"firstRun"_s || only == u"scanning"_s;
    if (!only.isEmpty() && !isView && !screenFromRawValue(only))
        return fail(u"no view is called %1"_s.arg(only));
    settle();
    if (wants(u"firstRun"_s) && !keep(u"firstRun"_s))
        return false;
    return only == u"firstRun"_s || (takeScan() && takeScreens());
}

bool PictureTaker::takeScan()
{
    bool kept = !wants(u"scanning"_s);
    QEventLoop untilIdle;
    QObject::connect(&m_app, &AppState::becameIdle, &untilIdle, &QEventLoop::quit);
    QObject::connect(
        &m_app, &AppState::progressReported, &untilIdle, [&](const ScanProgress &progress) {
            auto *presenter =
                qobject_cast<ScanningPresenter *>(m_window.presenter().viewPresenter());
            if (kept || !presenter || progress.fraction() < shownFraction)
                return;
            presenter->tellNow();
            kept = keep(u"scanning"_s);
        });
    m_app.rescan();
    if (m_app.pendingTasks() == 0)
        return fail(u"there is no library to scan"_s);
    untilIdle.exec();
    if (!m_app.result())
        return fail(m_app.toast() ? m_app.toast()->message : u"the scan failed"_s);
    // Without tracks there is nothing to be seen of a scan.
    if (m_app.result()->tracks.empty())
        return true;
    return kept || fail(u"the scan was over before it could be seen"_s);
}

bool PictureTaker::takeScreens()
{
    for (const ScreenInfo &info : allScreens()) {
        if (!wants(info.rawValue))
            continue;
        m_app.setSelection(info.screen);
        settle();
        waitUntilIdle();
        settle();
        if (!keep(info.rawValue) || (m_withStates && !takeStates(info.screen)))
            return false;
    }
    return true;
}

bool PictureTaker::takeStates(Screen screen)
{
    QObject *presenter = m_window.presenter().viewPresenter();
    const auto keepState = [this](const QString &name) { return keep(name); };
    bool taken = true;
    if (auto *exporting = qobject_cast<ExportPresenter *>(presenter))
        taken = takeExportStates(m_app, *exporting, keepState);
    else if (auto *run = qobject_cast<GigRunPresenter *>(presenter))
        taken = takeGigRunStates(*run, keepState);
    return taken ||
           fail(u"the screen %1 doesn't come to all its states"_s.arg(infoOf(screen).rawValue));
}

/// Lets everything that is queued happen: the change of the view, its layout, its pictures, and
/// what it asks of the background.
void PictureTaker::settle()
{
    for (int i = 0; i < 10; ++i) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        QThread::msleep(20);
    }
}

/// What a screen asks for when it opens comes from the background, or from a server.
void PictureTaker::waitUntilIdle()
{
    QEventLoop untilIdle;
    QObject::connect(&m_app, &AppState::becameIdle, &untilIdle, &QEventLoop::quit);
    if (m_app.pendingTasks() > 0)
        untilIdle.exec();
    auto *check = qobject_cast<GigCheckPresenter *>(m_window.presenter().viewPresenter());
    while (check && !check->hasReport())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

bool PictureTaker::keep(const QString &name)
{
    const QString file = QDir(m_folder).filePath(name + u".png"_s);
    return m_window.window()->grabWindow().save(file) || fail(u"can't write %1"_s.arg(file));
}

} // namespace tarnwick
