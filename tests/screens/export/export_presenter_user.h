#pragma once

#include "platform/file_choice.h"
#include "screens/export/export_presenter.h"
#include "support/command_fixture.h"

namespace tarnwick::testing {

constexpr int engineRow = 0;
constexpr int rekordboxRow = 1;
constexpr int backupRow = 2;

/// The rows of a model, the values of these roles with a blank between them.
inline QStringList rowsOf(const QAbstractItemModel &model, const QList<int> &roles)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList values;
        for (const int role : roles)
            values += model.index(row, 0).data(role).toString();
        rows += values.join(QLatin1Char(' '));
    }
    return rows;
}

/// A user with a library to export.
class ExportPresenterUser : public CommandFixture
{
public:
    void addTracks(int count)
    {
        for (int number = 1; number <= count; ++number)
            addTrack(QStringLiteral("Music/%1.mp3").arg(number));
    }
    /// Where exports go. Not there at first.
    QString folder(const QString &name = QStringLiteral("GIG USB")) const
    {
        return root().path(name);
    }
    /// Chooses a folder as in the dialog.
    void chooseFolder(ExportPresenter &presenter, const QString &path)
    {
        const platform::ScopedFileDialog dialog(
            [&](const platform::FileQuestion &, const platform::FileChosen &chosen) {
                chosen(path);
            });
        presenter.pickDestination();
    }
    bool exportTo(const QString &path, int row)
    {
        app().runExport(allExportTargets().at(row).target, path);
        return waitUntilIdle();
    }
};

} // namespace tarnwick::testing
