import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// Where a missing file might be, or what the search has come to.
Rectangle {
    id: panel

    required property string text
    required property CandidateModel candidates

    signal relinkPressed(Item button, int candidate)

    implicitHeight: column.implicitHeight + 20
    radius: Theme.radius.control
    color: Theme.neutral100
    border.color: Theme.rowRule

    ColumnLayout {
        id: column

        x: 14
        y: 10
        width: panel.width - 28
        spacing: 0

        PlainText {
            Layout.fillWidth: true
            Layout.topMargin: 4
            Layout.bottomMargin: 4
            visible: panel.text.length > 0
            text: panel.text
            color: Theme.inkSoft
            font: Theme.font(12.5)
            wrapMode: Text.Wrap
        }

        Repeater {
            model: panel.candidates

            RowLayout {
                id: candidate

                required property int index
                required property string badge
                required property int tint
                required property string file
                required property string path
                required property string source

                Layout.fillWidth: true
                Layout.preferredHeight: 52
                visible: panel.text.length === 0 // qmllint disable unqualified
                spacing: 12

                Rectangle {
                    implicitWidth: 42
                    implicitHeight: 22
                    radius: 6
                    color: Theme.tint(candidate.tint)

                    Figure {
                        anchors.centerIn: parent
                        text: candidate.badge
                        color: candidate.tint === Tint.Good ? Theme.onFill : Theme.ink
                        font: Theme.font(11, Font.DemiBold)
                    }
                }

                ColumnLayout {
                    Layout.fillWidth: true
                    spacing: 2

                    PlainText {
                        Layout.fillWidth: true
                        text: candidate.file
                        elide: Text.ElideMiddle
                    }

                    PlainText {
                        Layout.fillWidth: true
                        text: candidate.source
                        color: Theme.inkSoft
                        font: Theme.font(11.5)
                        elide: Text.ElideRight
                    }
                }

                PrimaryButton {
                    id: relink

                    activeFocusOnTab: false
                    title: "Relink"
                    Accessible.description: candidate.file
                    onClicked: panel.relinkPressed(relink, candidate.index) // qmllint disable unqualified
                }
            }
        }
    }
}
