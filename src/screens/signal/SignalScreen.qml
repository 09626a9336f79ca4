import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// What the crew is playing, and whether the user takes part.
Item {
    id: screen

    required property SignalPresenter presenter

    ListScaffold {
        id: scaffold

        anchors.fill: parent
        title: "What's landing"
        subtitle: "New music ranked by how many DJs are actually playing it — never by sales. 5-DJ minimum before anything shows."
        model: screen.presenter.chart
        delegate: ChartRow {
            width: scaffold.width // qmllint disable unqualified
            margin: scaffold.padding // qmllint disable unqualified
            last: index === scaffold.list.count - 1 // qmllint disable unqualified
        }

        ConnectCard {
            width: parent.width
            visible: screen.presenter.asksForServer
            presenter: screen.presenter
        }

        SharePanel {
            width: parent.width
            visible: !screen.presenter.asksForServer
            presenter: screen.presenter
        }

        FilterBar {
            width: parent.width
            visible: !screen.presenter.asksForServer
            presenter: screen.presenter
        }

        RowLayout {
            width: parent.width
            visible: !screen.presenter.asksForServer && screen.presenter.error.length > 0
            spacing: 8

            Icon {
                symbol: "exclamationmark.triangle.fill"
                size: 14
                color: Theme.warn
            }

            PlainText {
                Layout.fillWidth: true
                text: screen.presenter.error
                wrapMode: Text.Wrap
            }
        }

        Card {
            width: parent.width
            visible: !screen.presenter.asksForServer && screen.presenter.isEmpty
            spacing: 6

            PlainText {
                Layout.fillWidth: true
                text: "Nothing's crossed the 5-DJ line yet."
                font: Theme.display(15)
                wrapMode: Text.Wrap
                Accessible.role: Accessible.Heading
            }

            PlainText {
                Layout.fillWidth: true
                Layout.maximumWidth: 620
                text: "As your crew shares plays, the tracks the most DJs are spinning surface here. Be the first — turn on sharing and contribute your plays."
                color: Theme.inkSoft
                lineHeight: 1.3
                wrapMode: Text.Wrap
            }
        }
    }
}
