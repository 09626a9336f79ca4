import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// The program's mark and name.
RowLayout {
    spacing: 10

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
            color: Theme.inkFaint
            font: Theme.font(11)
        }
    }
}
