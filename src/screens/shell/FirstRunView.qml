import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// Where the user chooses a library.
ScrollArea {
    id: view

    required property FirstRunPresenter presenter

    padding: 28
    spacing: 20

    PlainText {
        width: parent.width
        text: "Let's look at your library"
        font: Theme.display(26)
        wrapMode: Text.Wrap
        Accessible.role: Accessible.Heading
    }

    PlainText {
        width: Math.min(parent.width, 664)
        text: "Tarnwick reads your Serato database and reports what it finds. Nothing is changed, moved, or uploaded — this first pass is read-only."
        color: Theme.inkSoft
        font: Theme.font(13.5)
        lineHeight: 1.25
        wrapMode: Text.Wrap
    }

    Callout {
        width: parent.width
        visible: view.presenter.seratoRunning
        symbol: "exclamationmark.triangle.fill"
        tint: Theme.warn
        text: "Serato is running. Reading is safe, but Tarnwick will never write while Serato is open."
    }

    SectionHead {
        width: parent.width
        title: "Libraries found"
    }

    Column {
        width: parent.width
        visible: view.presenter.hasLocations
        spacing: 10

        Repeater {
            model: view.presenter.locations

            LibraryRow {
                required property int index

                width: parent.width
                onScanPressed: view.presenter.scan(index) // qmllint disable unqualified
            }
        }
    }

    Card {
        width: parent.width
        visible: !view.presenter.hasLocations

        PlainText {
            Layout.fillWidth: true
            text: "No _Serato_ database found. Open Serato once to create one, then rescan."
            color: Theme.inkSoft
            font: Theme.font(13)
            wrapMode: Text.Wrap
        }
    }

    Card {
        width: parent.width
        spacing: 11

        SectionHead {
            Layout.fillWidth: true
            Layout.bottomMargin: 3
            title: "What this app never does"
        }

        Repeater {
            model: view.presenter.promises

            RowLayout {
                id: promise

                required property string modelData

                spacing: 10

                Icon {
                    symbol: "checkmark.circle.fill"
                    size: 16
                    color: Theme.good
                }

                PlainText {
                    Layout.fillWidth: true
                    text: promise.modelData
                    font: Theme.font(13)
                    wrapMode: Text.Wrap
                }
            }
        }
    }
}
