import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The three counts of the triage, and the time that a clean-up takes.
Card {
    id: row

    required property HealthPresenter presenter

    RowLayout {
        Layout.fillWidth: true
        spacing: 22

        StatCell {
            value: row.presenter.missing
            label: "Missing files"
            tint: Theme.tint(row.presenter.missingTint)
        }

        Rule {
            Layout.fillHeight: true
        }

        StatCell {
            value: row.presenter.groups
            label: "Duplicate groups"
            tint: Theme.tint(row.presenter.groupsTint)
        }

        Rule {
            Layout.fillHeight: true
        }

        StatCell {
            value: row.presenter.untagged
            label: "Untagged genre"
            tint: Theme.tint(row.presenter.untaggedTint)
        }

        Rule {
            Layout.fillHeight: true
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 1

            Figure {
                Layout.fillWidth: true
                text: row.presenter.estimate
                font: Theme.display(30)
            }

            PlainText {
                Layout.fillWidth: true
                text: "of cleanup to get to a clean library"
                color: Theme.inkSoft
                font: Theme.font(14)
                elide: Text.ElideRight
            }
        }
    }
}
