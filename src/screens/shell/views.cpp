#include "screens/shell/views.h"

#include "screens/crate_hygiene/crate_hygiene_presenter.h"
#include "screens/cues/cues_presenter.h"
#include "screens/duplicates/duplicates_presenter.h"
#include "screens/export/export_presenter.h"
#include "screens/fix_queue/fix_queue_presenter.h"
#include "screens/gig_check/gig_check_presenter.h"
#include "screens/gig_run/gig_run_presenter.h"
#include "screens/health/health_presenter.h"
#include "screens/loudness/loudness_presenter.h"
#include "screens/missing/missing_presenter.h"
#include "screens/safety/change_log_presenter.h"
#include "screens/safety/library_safety_presenter.h"
#include "screens/score/score_presenter.h"
#include "screens/shell/coming_soon_presenter.h"
#include "screens/shell/first_run_presenter.h"
#include "screens/shell/scanning_presenter.h"
#include "screens/signal/signal_presenter.h"
#include "screens/track_id/track_id_presenter.h"
#include "screens/versions/versions_presenter.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

template <typename Presenter>
QObject *make(AppState &app, QObject *parent)
{
    return new Presenter(app, parent);
}

struct ScreenView
{
    Screen screen;
    QString file;
    QObject *(*makePresenter)(AppState &app, QObject *parent);
};

/// The screens that have a view of their own; all others are still to come.
const ScreenView *viewOf(Screen screen)
{
    static const QList<ScreenView> views = {
        {Screen::LibraryScore, u"LibraryScoreScreen"_s, make<ScorePresenter>},
        {Screen::Health, u"HealthScreen"_s, make<HealthPresenter>},
        {Screen::FixQueue, u"FixQueueScreen"_s, make<FixQueuePresenter>},
        {Screen::LibrarySafety, u"LibrarySafetyScreen"_s, make<LibrarySafetyPresenter>},
        {Screen::Missing, u"MissingFilesScreen"_s, make<MissingPresenter>},
        {Screen::Duplicates, u"DuplicatesScreen"_s, make<DuplicatesPresenter>},
        {Screen::Cues, u"CuesGridsScreen"_s, make<CuesPresenter>},
        {Screen::TrackId, u"TrackIDScreen"_s, make<TrackIdPresenter>},
        {Screen::Loudness, u"LoudnessScreen"_s, make<LoudnessPresenter>},
        {Screen::Versions, u"VersionsScreen"_s, make<VersionsPresenter>},
        {Screen::Hygiene, u"CrateHygieneScreen"_s, make<CrateHygienePresenter>},
        {Screen::GigCheck, u"GigCheckScreen"_s, make<GigCheckPresenter>},
        {Screen::GigRun, u"GigRunScreen"_s, make<GigRunPresenter>},
        {Screen::Signal, u"SignalScreen"_s, make<SignalPresenter>},
        {Screen::ChangeLog, u"ChangeLogScreen"_s, make<ChangeLogPresenter>},
        {Screen::Export, u"ExportScreen"_s, make<ExportPresenter>},
    };
    for (const ScreenView &view : views) {
        if (view.screen == screen)
            return &view;
    }
    return nullptr;
}

QString fileOf(const ViewKey &view)
{
    switch (view.kind) {
    case ViewKey::Kind::FirstRun:
        return u"FirstRunView"_s;
    case ViewKey::Kind::Scanning:
        return u"ScanningView"_s;
    case ViewKey::Kind::Screen:
        break;
    }
    const ScreenView *screen = viewOf(view.screen);
    return screen ? screen->file : u"ComingSoonScreen"_s;
}

} // namespace

ViewKey wantedView(const AppState &app)
{
    if (std::holds_alternative<ChooseLibrary>(app.phase()))
        return {ViewKey::Kind::FirstRun};
    if (std::holds_alternative<Scanning>(app.phase()))
        return {ViewKey::Kind::Scanning};
    return {ViewKey::Kind::Screen, app.selection()};
}

QUrl sourceOf(const ViewKey &view)
{
    return QUrl(u"qrc:/qt/qml/Tarnwick/Screens/%1.qml"_s.arg(fileOf(view)));
}

QObject *makePresenter(const ViewKey &view, AppState &app, QObject *parent)
{
    switch (view.kind) {
    case ViewKey::Kind::FirstRun:
        return new FirstRunPresenter(app, parent);
    case ViewKey::Kind::Scanning:
        return new ScanningPresenter(app, parent);
    case ViewKey::Kind::Screen:
        break;
    }
    if (const ScreenView *screen = viewOf(view.screen))
        return screen->makePresenter(app, parent);
    return new ComingSoonPresenter(view.screen, parent);
}

} // namespace tarnwick
