#include "cli/session.h"

#include "cli/progress_line.h"
#include "foundation/paths.h"
#include "platform/environment.h"
#include "platform/files.h"

#include <QEventLoop>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

/// A list on a screen is for a look; what is longer is asked for.
constexpr qsizetype rowsWithoutAll = 40;

} // namespace

SeratoLibrary::Location locationOfFolder(const QString &folder,
                                         const QList<SeratoLibrary::Location> &known)
{
    const QString path = standardizedPath(folder);
    for (const SeratoLibrary::Location &location : known) {
        if (standardizedPath(location.folderPath()) == path)
            return location;
    }
    SeratoLibrary::Location location{lastPathComponent(parentFolder(path)),
                                     QUrl::fromLocalFile(path), platform::isFolder(path)};
    location.hasDatabase = platform::isRegularFile(location.databasePath());
    return location;
}

Session::Session(const CommandLine &line, Output &output)
    : m_line(line)
    , m_output(output)
    , m_app(AppState::Environment::Ignored)
{
    if (!line.has(u"all"_s))
        output.setRowLimit(rowsWithoutAll);
    QObject::connect(&m_app, &AppState::toastRaised, &m_app,
                     [this](const Toast &toast) { m_toasts.append(toast); });
    QObject::connect(&m_app, &AppState::progressReported, &m_app,
                     [this](const ScanProgress &progress) { m_progress.append(progress); });
}

Status Session::run()
{
    if (m_line.command->check) {
        if (const Done right = m_line.command->check(m_line); !right) {
            complain(right.error().message);
            return Status::WrongUsage;
        }
    }
    if (m_line.command->scans == Scans::Yes) {
        if (const Status status = scan(); status != Status::Done)
            return status;
    }
    const Status status = m_line.command->run(*this);
    waitForBackground();
    return status;
}

Status Session::scan()
{
    const auto chosen = location();
    ProgressLine progress;
    const auto watching =
        QObject::connect(&m_app, &AppState::progressReported, &m_app,
                         [&progress](const ScanProgress &report) { progress.show(report); });
    if (!chosen) {
        m_app.showToast(u"Load a library first."_s);
    } else {
        const bool plain = m_line.has(u"no-tags"_s);
        m_app.startScan(*chosen,
                        plain ? LibraryScanner::ReadTags::No : LibraryScanner::ReadTags::Yes);
        waitForBackground();
    }
    progress.clear();
    QObject::disconnect(watching);
    if (m_app.result())
        return Status::Done;
    tellToastsAlone();
    return Status::Refused;
}

std::optional<SeratoLibrary::Location> Session::location()
{
    if (!m_line.library)
        return m_app.defaultLocation();
    return locationOfFolder(platform::absolutePath(*m_line.library), m_app.locations());
}

void Session::waitForBackground()
{
    QEventLoop loop;
    QObject::connect(&m_app, &AppState::becameIdle, &loop, &QEventLoop::quit);
    while (m_app.pendingTasks() > 0)
        loop.exec();
}

/// For a run that has no other result to show.
void Session::tellToastsAlone()
{
    if (wantsJson()) {
        m_output.json().beginObject();
        writeToasts(m_output.json());
        m_output.json().endObject();
    }
    printToasts(Status::Refused);
}

void Session::writeToasts(JsonWriter &json) const
{
    json.key(u"toasts");
    json.beginArray();
    for (const Toast &toast : m_toasts) {
        json.beginObject();
        json.member(u"message", toast.message);
        json.member(u"reversible", toast.reversible);
        json.endObject();
    }
    json.endArray();
}

void Session::printToasts(Status status)
{
    for (const Toast &toast : m_toasts) {
        if (status == Status::Done)
            m_output.line(toast.message);
        else
            complain(toast.message);
    }
}

Status Session::statusOfToasts() const
{
    const bool hasProblem = std::any_of(m_toasts.begin(), m_toasts.end(),
                                        [](const Toast &toast) { return toast.isProblem; });
    return hasProblem ? Status::Refused : Status::Done;
}

Status Session::reportToasts()
{
    waitForBackground();
    const Status status = statusOfToasts();
    if (wantsJson()) {
        m_output.json().beginObject();
        writeToasts(m_output.json());
        m_output.json().endObject();
    }
    if (!wantsJson() || status != Status::Done)
        printToasts(status);
    return status;
}

Status Session::namesNothing(const QString &message)
{
    complain(message);
    return Status::WrongUsage;
}

bool Session::liesAt(const ScannedTrack &scanned, const QString &path)
{
    return withoutLeadingSlash(scanned.track.relativePath) == withoutLeadingSlash(path);
}

const ScannedTrack *Session::trackAt(const QString &path) const
{
    for (const ScannedTrack &scanned : m_app.result()->tracks) {
        if (liesAt(scanned, path))
            return &scanned;
    }
    return nullptr;
}

void Session::complain(const QString &message)
{
    // One line, whatever a name or an argument holds.
    const QString oneLine = QString(message).replace(u'\n', u' ').replace(u'\r', u' ');
    const QByteArray line = "tarnwick-cli: " + oneLine.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, size_t(line.size()), stderr);
}

} // namespace tarnwick::cli
