import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// What the cue vault protects and what has been lost, with the snapshots beside it.
Item {
    id: screen

    required property CuesPresenter presenter

    SideBySide {
        anchors.fill: parent

        main: ListScaffold {
            id: scaffold

            anchors.fill: parent
            title: "Cues & grids"
            subtitle: "Tarnwick keeps a copy of every track's hot cues and beat grid. If any go missing, put them back exactly."
            model: screen.presenter.losses
            delegate: LossRow {
                width: scaffold.width // qmllint disable unqualified
                margin: scaffold.padding // qmllint disable unqualified
                last: index === scaffold.list.count - 1 // qmllint disable unqualified
                onRestorePressed: (button, key) => LongRun.start(button, () => screen.presenter.restore(key))
            }

            WriteGateBanner {
                width: parent.width
                presenter: screen.presenter.gate
            }

            CueStats {
                width: parent.width
                presenter: screen.presenter
            }

            RowLayout {
                width: parent.width
                height: 36

                SectionHead {
                    Layout.fillWidth: true
                    title: "Losses since last capture"
                }

                PrimaryButton {
                    id: restoreAll

                    visible: screen.presenter.hasLosses
                    title: screen.presenter.restoreAllTitle
                    symbol: "arrow.uturn.backward"
                    onClicked: LongRun.start(restoreAll, () => screen.presenter.restoreAll())
                }
            }

            NoLossCard {
                width: parent.width
                visible: !screen.presenter.hasLosses
            }
        }

        side: SnapshotTimelineCard {
            width: parent.width
            most: parent.height
            presenter: screen.presenter.timeline
        }
    }
}
