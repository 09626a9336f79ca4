import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// How far the library and an earlier export have come apart.
Card {
    id: card

    required property ExportPresenter presenter

    readonly property bool empty: card.presenter.nothingToCompare.length > 0

    RowLayout {
        Layout.fillWidth: true
        visible: card.empty
        spacing: 10

        Icon {
            symbol: "info.circle"
            size: 16
            color: Theme.inkSoft
        }

        PlainText {
            Layout.fillWidth: true
            text: card.presenter.nothingToCompare
            color: Theme.inkSoft
            font: Theme.font(12.5)
            wrapMode: Text.Wrap
        }
    }

    ColumnLayout {
        Layout.fillWidth: true
        visible: !card.empty
        spacing: 14

        SectionHead {
            Layout.fillWidth: true
            title: "Drift from the device"
        }

        RowLayout {
            Layout.fillWidth: true
            spacing: 18

            Repeater {
                model: card.presenter.drift

                DriftFigure {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                }
            }
        }

        PlainText {
            Layout.fillWidth: true
            text: "Re-export to bring the device in line with Serato."
            color: Theme.inkSoft
            font: Theme.font(12.5)
            wrapMode: Text.Wrap
        }
    }
}
