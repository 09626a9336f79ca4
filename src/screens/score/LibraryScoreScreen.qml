import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The screen after a scan: the score, the one thing to do next, and the six dimensions.
Item {
    id: screen

    required property ScorePresenter presenter

    ScreenScaffold {
        anchors.fill: parent
        visible: screen.presenter.hasScore
        title: "Library score"
        subtitle: "Six dimensions of your Serato library, each measured from what's actually there. Fix anything and the score moves."

        RowLayout {
            width: parent.width
            spacing: 18

            ScorePanel {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                presenter: screen.presenter
            }

            NextStepPanel {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                presenter: screen.presenter
            }
        }

        Card {
            width: parent.width
            bottomPadding: 10

            SectionHead {
                Layout.fillWidth: true
                Layout.bottomMargin: 6
                title: "The six dimensions"
                trailing: "avg = score"
            }

            Repeater {
                model: screen.presenter.dimensions

                DimensionRow {
                    Layout.fillWidth: true
                }
            }
        }
    }
}
