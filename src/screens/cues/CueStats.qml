import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// What is protected, and what has gone.
Card {
    id: stats

    required property CuesPresenter presenter

    RowLayout {
        Layout.fillWidth: true
        spacing: 14

        StatCell {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            value: stats.presenter.protectedTracks
            label: "Tracks protected"
            tint: Theme.good
        }

        StatCell {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            value: stats.presenter.withGrid
            label: "With a beat grid"
        }

        StatCell {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            value: stats.presenter.found
            label: "Losses found"
            tint: Theme.tint(stats.presenter.foundTint)
        }
    }
}
