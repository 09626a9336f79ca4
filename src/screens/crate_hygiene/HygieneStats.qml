import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// How many crates there are, and how much of each kind could be tidied.
Card {
    id: stats

    required property CrateHygienePresenter presenter

    RowLayout {
        Layout.fillWidth: true
        spacing: 18

        StatCell {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            value: stats.presenter.crates
            label: "Crates"
        }

        StatCell {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            value: stats.presenter.overlaps
            label: "Near-duplicates"
            tint: Theme.tint(stats.presenter.overlapsTint)
        }

        StatCell {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            value: stats.presenter.orphans
            label: "Orphan tracks"
            tint: Theme.tint(stats.presenter.orphansTint)
        }

        StatCell {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            value: stats.presenter.variants
            label: "Genre variants"
            tint: Theme.tint(stats.presenter.variantsTint)
        }
    }
}
