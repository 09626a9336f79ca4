import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// How much has been changed, and what of it is kept.
Card {
    id: stats

    required property ChangeLogPresenter presenter

    GridLayout {
        Layout.fillWidth: true
        columns: stats.width < 640 ? 2 : 4
        columnSpacing: 18
        rowSpacing: 16

        StatCell {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            value: stats.presenter.made
            label: "Changes made"
        }

        StatCell {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            value: stats.presenter.held
            label: "In holding · 30 days"
            tint: Theme.tint(stats.presenter.heldTint)
        }

        StatCell {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            value: "0"
            label: "Files deleted"
            tint: Theme.good
        }

        StatCell {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            value: stats.presenter.snapshots
            label: "Snapshots"
        }
    }
}
