import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// What the program never does, and whether it may write now.
Card {
    id: panel

    required property LibrarySafetyPresenter presenter

    spacing: 11

    SectionHead {
        Layout.fillWidth: true
        Layout.bottomMargin: 3
        title: "What this app never does"
    }

    Repeater {
        model: panel.presenter.promises

        RowLayout {
            id: promise

            required property string modelData

            spacing: 10

            Icon {
                Layout.alignment: Qt.AlignTop
                symbol: "checkmark.circle.fill"
                size: 16
                color: Theme.good
            }

            PlainText {
                Layout.fillWidth: true
                text: promise.modelData
                wrapMode: Text.Wrap
            }
        }
    }

    Rule {
        Layout.fillWidth: true
        Layout.topMargin: 3
    }

    RowLayout {
        Layout.fillWidth: true
        spacing: 10

        Icon {
            symbol: panel.presenter.statusSymbol
            size: 16
            color: Theme.tint(panel.presenter.statusTint)
        }

        PlainText {
            Layout.fillWidth: true
            text: panel.presenter.status
            color: Theme.tint(panel.presenter.statusTint)
            font: Theme.font(13, Font.DemiBold)
            wrapMode: Text.Wrap
        }
    }
}
