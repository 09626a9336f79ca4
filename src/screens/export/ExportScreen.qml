import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// Where the library is taken to another system.
Item {
    id: screen

    required property ExportPresenter presenter

    ScreenScaffold {
        anchors.fill: parent
        visible: screen.presenter.hasFigures
        title: "USB & export"
        subtitle: "Take your library to Engine DJ or rekordbox — cues, loops and grids come along. Exporting never changes your Serato library."

        RowLayout {
            width: parent.width
            spacing: 18

            ColumnLayout {
                Layout.fillWidth: true
                Layout.preferredWidth: 11
                Layout.alignment: Qt.AlignTop
                spacing: 18

                TargetCard {
                    Layout.fillWidth: true
                    presenter: screen.presenter
                }

                CarryCard {
                    Layout.fillWidth: true
                    presenter: screen.presenter
                }
            }

            ColumnLayout {
                Layout.fillWidth: true
                Layout.preferredWidth: 10
                Layout.alignment: Qt.AlignTop
                spacing: 18

                ExportCard {
                    Layout.fillWidth: true
                    presenter: screen.presenter
                }

                DriftCard {
                    Layout.fillWidth: true
                    visible: screen.presenter.knowsDrift
                    presenter: screen.presenter
                }
            }
        }
    }
}
