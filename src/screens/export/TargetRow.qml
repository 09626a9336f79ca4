import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A target, one of which is chosen.
PlainButton {
    id: row

    required property int index
    required property string name
    required property string symbol
    required property string blurb
    required property bool chosen

    signal upPressed
    signal downPressed

    text: row.name
    ringGap: -1
    horizontalPadding: 12
    verticalPadding: 11
    Accessible.description: row.blurb
    Accessible.selectable: true
    Accessible.selected: row.chosen
    Keys.onUpPressed: row.upPressed()
    Keys.onDownPressed: row.downPressed()

    contentItem: RowLayout {
        spacing: 12

        Icon {
            symbol: row.chosen ? "largecircle.fill.circle" : "circle"
            size: 18
            color: row.chosen ? Theme.accent : Theme.neutral400
        }

        Icon {
            symbol: row.symbol
            size: 20
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            PlainText {
                Layout.fillWidth: true
                text: row.name
                font: Theme.font(13.5, Font.DemiBold)
                elide: Text.ElideRight
                Accessible.ignored: true
            }

            PlainText {
                Layout.fillWidth: true
                text: row.blurb
                color: Theme.inkFaint
                font: Theme.font(11.5)
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
        }
    }
    background: Rectangle {
        radius: Theme.radius.control
        color: row.chosen ? Theme.accent100 : row.down ? Theme.pressFill : row.hovered ? Theme.hoverFill : "transparent"
    }
}
