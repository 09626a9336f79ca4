#include "screenshots/export_states.h"

#include "platform/file_choice.h"

#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// How far the export has come on its picture.
constexpr double shownFraction = 0.4;

constexpr int engineRow = 0;
constexpr int rekordboxRow = 1;

void chooseFolder(ExportPresenter &presenter, const QString &folder)
{
    const platform::ScopedFileDialog dialog(
        [&](const platform::FileQuestion &, const platform::FileChosen &chosen) {
            chosen(folder);
        });
    presenter.pickDestination();
}

/// Lets the window go on until something holds; false if it doesn't come to that.
bool waitFor(const std::function<bool()> &holds)
{
    QEventLoop loop;
    QTimer looking;
    QObject::connect(&looking, &QTimer::timeout, &loop, [&] {
        if (holds())
            loop.quit();
    });
    QTimer::singleShot(30000, &loop, [&] { loop.exit(1); });
    looking.start(20);
    return loop.exec() == 0;
}

bool waitForDrift(const AppState &app, const ExportPresenter &presenter)
{
    return waitFor([&] { return app.pendingTasks() == 0 && presenter.knowsDrift(); });
}

/// What an export of another library left.
bool writeOldCollection(const QString &folder)
{
    QFile file(folder + u"/rekordbox.xml"_s);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    for (int number = 0; number < 12; ++number) {
        file.write("<TRACK Location=\"file://localhost/Volumes/OLD/" + QByteArray::number(number) +
                   ".mp3\"/>\n");
    }
    return true;
}

} // namespace

bool takeExportStates(AppState &app, ExportPresenter &presenter,
                      const std::function<bool(const QString &name)> &keep)
{
    QTemporaryDir place;
    const QString drive = place.filePath(u"GIG USB"_s);
    chooseFolder(presenter, drive);
    if (!waitForDrift(app, presenter) || !keep(u"export-chosen"_s))
        return false;

    bool kept = false;
    const auto watching = QObject::connect(&app, &AppState::exportingChanged, &app, [&] {
        if (!kept && presenter.fraction() >= shownFraction)
            kept = keep(u"export-running"_s);
    });
    presenter.runExport();
    const bool ran = waitForDrift(app, presenter);
    QObject::disconnect(watching);
    if (!ran || !kept || !keep(u"export-done"_s))
        return false;

    if (!writeOldCollection(drive))
        return false;
    presenter.chooseTarget(rekordboxRow);
    if (!waitForDrift(app, presenter) || !keep(u"export-drift"_s))
        return false;

    presenter.chooseTarget(engineRow);
    chooseFolder(presenter, drive + u"/rekordbox.xml"_s);
    presenter.runExport();
    return waitForDrift(app, presenter) && keep(u"export-failed"_s);
}

} // namespace tarnwick
