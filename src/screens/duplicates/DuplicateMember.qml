import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A copy: whether it is the one to keep, which track it is, and what it has of its own.
RowLayout {
    id: member

    required property string first
    required property string second
    required property list<string> tags
    required property bool kept

    signal keepPressed

    spacing: 10

    PlainButton {
        Layout.leftMargin: -8
        activeFocusOnTab: false
        padding: 8
        corner: height / 2
        text: member.second
        hint: "Keep this copy"
        Accessible.selectable: true
        Accessible.selected: member.kept
        contentItem: Icon {
            symbol: member.kept ? "largecircle.fill.circle" : "circle"
            size: 18
            color: member.kept ? Theme.accent : Theme.neutral500
        }
        onClicked: member.keepPressed()
    }

    TrackLine {
        Layout.fillWidth: true
        first: member.first
        second: member.second
    }

    Row {
        spacing: 6

        Repeater {
            model: member.tags

            Rectangle {
                id: tag

                required property string modelData

                implicitWidth: words.implicitWidth + 12
                implicitHeight: words.implicitHeight + 6
                radius: 5
                color: Theme.neutral200

                PlainText {
                    id: words

                    anchors.centerIn: parent
                    text: tag.modelData
                    color: Theme.neutral700
                    font: Theme.font(10.5, Font.Medium)
                }
            }
        }
    }

    PlainText {
        Layout.preferredWidth: 70
        horizontalAlignment: Text.AlignRight
        text: member.kept ? "Keep" : "→ holding"
        color: member.kept ? Theme.good : Theme.inkSoft
        font: Theme.font(11.5, Font.DemiBold)
    }
}
