import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// Whether the crates that go to a gig can be played tonight.
Item {
    id: screen

    required property GigCheckPresenter presenter

    ScreenScaffold {
        anchors.fill: parent
        title: "Gig check"
        subtitle: "Pick the crates you're taking and where they're going. Tarnwick tells you if the set is ready."

        RowLayout {
            id: columns

            width: parent.width
            spacing: 18

            ColumnLayout {
                Layout.preferredWidth: 0.4 * (columns.width - columns.spacing)
                Layout.maximumWidth: 0.4 * (columns.width - columns.spacing)
                Layout.alignment: Qt.AlignTop
                spacing: 18

                GigCrateCard {
                    Layout.fillWidth: true
                    presenter: screen.presenter
                    // What the window has room for, less what stands above and below.
                    most: screen.height - 254
                }

                Card {
                    Layout.fillWidth: true
                    spacing: 12

                    SectionHead {
                        Layout.fillWidth: true
                        title: "Destination"
                    }

                    MenuButton {
                        Layout.fillWidth: true
                        symbol: "externaldrive"
                        text: screen.presenter.destination
                        choices: screen.presenter.destinations
                        Accessible.description: "Destination"
                        onOpened: screen.presenter.lookForDrives()
                        onPicked: row => screen.presenter.chooseDestination(screen.presenter.destinations[row])
                    }
                }
            }

            ColumnLayout {
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignTop
                visible: screen.presenter.hasReport
                spacing: 18

                VerdictCard {
                    Layout.fillWidth: true
                    presenter: screen.presenter
                }

                GigFindingCard {
                    Layout.fillWidth: true
                    title: "Blockers"
                    tint: Theme.accent
                    findings: screen.presenter.blockers
                    emptyText: "No blockers — nothing will fail to load."
                    onFixPressed: row => screen.presenter.mendBlocker(row)
                }

                GigFindingCard {
                    Layout.fillWidth: true
                    title: "Polish"
                    tint: Theme.warn
                    findings: screen.presenter.polish
                    emptyText: "Nicely polished — keys, cues and levels are in place."
                    onFixPressed: row => screen.presenter.mendPolish(row)
                }
            }
        }
    }
}
