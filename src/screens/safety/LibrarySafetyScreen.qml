import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// Which library is being worked with, and what keeps it safe.
Item {
    id: screen

    required property LibrarySafetyPresenter presenter

    ScreenScaffold {
        anchors.fill: parent
        title: "Library & safety"
        subtitle: "Which Serato library you're working with, and the promises Tarnwick keeps around it."

        RowLayout {
            width: parent.width
            spacing: 18

            ColumnLayout {
                Layout.fillWidth: true
                Layout.preferredWidth: 3
                Layout.alignment: Qt.AlignTop
                spacing: 18

                Card {
                    Layout.fillWidth: true
                    bottomPadding: 10

                    SectionHead {
                        Layout.fillWidth: true
                        Layout.bottomMargin: 6
                        title: "Libraries"
                        trailing: screen.presenter.found
                    }

                    Repeater {
                        model: screen.presenter.libraries

                        SafetyLibraryRow {
                            Layout.fillWidth: true
                            onScanPressed: screen.presenter.scan(index) // qmllint disable unqualified
                        }
                    }
                }

                Card {
                    Layout.fillWidth: true
                    bottomPadding: 10

                    SectionHead {
                        Layout.fillWidth: true
                        Layout.bottomMargin: 6
                        title: "Safety steps"
                    }

                    Repeater {
                        model: screen.presenter.steps

                        SafetyStepRow {
                            Layout.fillWidth: true
                            taken: screen.presenter.taken // qmllint disable unqualified
                            takeTitle: screen.presenter.takeTitle // qmllint disable unqualified
                            canTake: screen.presenter.canTake // qmllint disable unqualified
                            onTakePressed: screen.presenter.takeFirstSnapshot() // qmllint disable unqualified
                        }
                    }
                }
            }

            PromisePanel {
                Layout.fillWidth: true
                Layout.preferredWidth: 2
                Layout.alignment: Qt.AlignTop
                presenter: screen.presenter
            }
        }
    }
}
