import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A row that stands out: an icon and one sentence on a ground of the same colour.
Rectangle {
    id: callout

    required property string symbol
    required property color tint
    required property string text

    implicitHeight: row.implicitHeight + 24
    radius: Theme.radius.card
    color: Qt.alpha(callout.tint, 0.1)
    border.color: Qt.alpha(callout.tint, 0.22)

    RowLayout {
        id: row

        anchors.verticalCenter: parent.verticalCenter
        x: 16
        width: parent.width - 32
        spacing: 10

        Icon {
            symbol: callout.symbol
            size: 16
            color: callout.tint
        }

        PlainText {
            Layout.fillWidth: true
            text: callout.text
            font: Theme.font(13)
            wrapMode: Text.Wrap
        }
    }
}
