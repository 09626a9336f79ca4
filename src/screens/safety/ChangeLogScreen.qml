import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// What has been done to the library and how to take it back, with the snapshots beside it.
Item {
    id: screen

    required property ChangeLogPresenter presenter

    SideBySide {
        anchors.fill: parent

        main: ListScaffold {
            id: scaffold

            anchors.fill: parent
            title: "Change log"
            subtitle: "Everything Tarnwick has done, and how to take it back. No change is ever final."
            model: screen.presenter.changes
            delegate: ChangeRow {
                width: scaffold.width // qmllint disable unqualified
                margin: scaffold.padding // qmllint disable unqualified
                last: index === scaffold.list.count - 1 // qmllint disable unqualified
                onUndoPressed: (button, key) => LongRun.start(button, () => screen.presenter.undo(key))
            }

            ChangeStats {
                width: parent.width
                presenter: screen.presenter
            }

            RowLayout {
                width: parent.width
                height: 30

                SectionHead {
                    Layout.fillWidth: true
                    title: "Changes"
                }

                TextButton {
                    id: undoAll

                    visible: screen.presenter.hasReversible
                    text: "Undo everything"
                    tint: Theme.accent700
                    onClicked: LongRun.start(undoAll, () => screen.presenter.undoEverything())
                }
            }

            Card {
                width: parent.width
                visible: !screen.presenter.hasChanges
                spacing: 6

                PlainText {
                    Layout.fillWidth: true
                    text: "No library changes yet."
                    font: Theme.font(13.5, Font.DemiBold)
                }

                PlainText {
                    Layout.fillWidth: true
                    text: "This build is read-only apart from snapshots. When repairs land, each one appears here with a one-click undo and a 30-day window."
                    color: Theme.inkSoft
                    font: Theme.font(12.5)
                    wrapMode: Text.Wrap
                }
            }
        }

        side: SnapshotTimelineCard {
            width: parent.width
            most: parent.height
            presenter: screen.presenter.timeline
        }
    }
}
