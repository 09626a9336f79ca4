import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// The program's mark and name.
RowLayout {
    id: header

    spacing: 10

    HoverHandler {
        id: hover
    }

    Tip {
        text: "F1 opens the guide, Ctrl+Q quits"
        over: hover.hovered ? header : null
    }

    Rectangle {
        implicitWidth: 26
        implicitHeight: 26
        radius: 7
        color: Theme.accent

        Icon {
            anchors.centerIn: parent
            symbol: "cross.case.fill"
            size: 16
            color: Theme.onFill
        }
    }

    Column {
        Layout.fillWidth: true
        spacing: 1

        PlainText {
            text: "Tarnwick"
            font: Theme.display(14)
        }

        PlainText {
            text: "Serato library care"
            color: Theme.neutral700
            font: Theme.font(11)
        }
    }
}
