import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// Where to, the button that starts it, how far it has come, and what has come of it.
Card {
    id: card

    required property ExportPresenter presenter

    spacing: 12

    SectionHead {
        Layout.fillWidth: true
        title: "Export"
    }

    GhostButton {
        id: folder

        /// It can be copied.
        readonly property string path: card.presenter.folder

        hint: folder.path

        Layout.fillWidth: true
        title: card.presenter.folderTitle
        symbol: "folder"
        Accessible.description: card.presenter.folder
        contentItem: RowLayout {
            spacing: 6

            Icon {
                symbol: folder.symbol
                size: 12
                heavy: true
            }

            // A drive may be called anything.
            PlainText {
                Layout.fillWidth: true
                text: folder.title
                font: Theme.font(13, Font.DemiBold)
                elide: Text.ElideMiddle
                Accessible.ignored: true
            }
        }
        onClicked: card.presenter.pickDestination()
    }

    PrimaryButton {
        Layout.fillWidth: true
        title: card.presenter.exportTitle
        symbol: "square.and.arrow.up"
        enabled: card.presenter.canExport
        onClicked: card.presenter.runExport()
    }

    ColumnLayout {
        Layout.fillWidth: true
        Layout.topMargin: 4
        Layout.bottomMargin: 4
        visible: card.presenter.isExporting
        spacing: 7

        RowLayout {
            Layout.fillWidth: true
            spacing: 12

            PlainText {
                Layout.fillWidth: true
                text: card.presenter.phase
                font: Theme.font(12.5)
                elide: Text.ElideRight
            }

            Figure {
                text: card.presenter.progress
                color: Theme.inkSoft
                font: Theme.font(12)
            }
        }

        Meter {
            Layout.fillWidth: true
            fraction: card.presenter.fraction
            tint: Theme.accent
        }
    }

    RowLayout {
        Layout.fillWidth: true
        Layout.topMargin: -4
        Layout.bottomMargin: -4
        Layout.rightMargin: -10
        visible: card.presenter.outcome.length > 0
        spacing: 10

        Icon {
            symbol: "checkmark.seal.fill"
            size: 18
            color: Theme.good
        }

        PlainText {
            Layout.fillWidth: true
            text: card.presenter.outcome
            wrapMode: Text.Wrap
        }

        TextButton {
            text: "Reveal"
            tint: Theme.accent700
            Accessible.description: card.presenter.outcome
            onClicked: card.presenter.reveal()
        }
    }

    PlainText {
        id: note

        Layout.fillWidth: true
        visible: note.text.length > 0
        text: card.presenter.hardwareNote
        color: Theme.inkFaint
        font: Theme.font(12)
        wrapMode: Text.Wrap
    }
}
