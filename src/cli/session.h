#pragma once

#include "app/app_state.h"
#include "cli/command_line.h"
#include "cli/command_table.h"
#include "cli/output.h"

#include <QList>

namespace tarnwick::cli {

/// One run of one command: the program's state, what was asked for, and where answers go.
class Session
{
public:
    Session(const CommandLine &line, Output &output);

    const CommandLine &line() const { return m_line; }
    AppState &app() { return m_app; }
    Output &out() { return m_output; }
    bool wantsJson() const { return m_line.json; }
    const QList<Toast> &toasts() const { return m_toasts; }
    const QList<ScanProgress> &progress() const { return m_progress; }

    /// Does what was asked for, the scan ahead of it included.
    Status run();

    /// Waits until no background work is left.
    void waitForBackground();

    /// The member "toasts" of an object that is being written: all of this run, in order.
    void writeToasts(JsonWriter &json) const;
    /// One a line: the result of a run that went well, else what stood in its way.
    void printToasts(Status status);

    /// Refused where any toast of this run tells of a refusal or a failure.
    Status statusOfToasts() const;
    /// Ends a writing command: waits for what it started in the background and shows its toasts.
    Status reportToasts();

    /// Ends a command whose arguments name nothing that is there, with one line on standard error.
    static Status namesNothing(const QString &message);

    /// Whether that is its path in the library, one leading slash ignored on both sides.
    static bool liesAt(const ScannedTrack &scanned, const QString &path);
    /// The first track that lies at that path; null for none.
    const ScannedTrack *trackAt(const QString &path) const;

    /// One line on standard error.
    static void complain(const QString &message);

private:
    Status scan();
    std::optional<SeratoLibrary::Location> location();
    void tellToastsAlone();

    const CommandLine &m_line;
    Output &m_output;
    AppState m_app;
    QList<Toast> m_toasts;
    QList<ScanProgress> m_progress;
};

/// The `_Serato_` folder at a path, under the name that discovery gives it, else that of its parent
/// folder.
SeratoLibrary::Location locationOfFolder(const QString &folder,
                                         const QList<SeratoLibrary::Location> &known);

} // namespace tarnwick::cli
