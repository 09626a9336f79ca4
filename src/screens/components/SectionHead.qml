import QtQuick
import Tarnwick.Components
import QtQuick.Layouts

/// The title of a section, and what is to be said of it at the row's end.
RowLayout {
    id: head

    required property string title
    property string trailing

    spacing: 12

    PlainText {
        Layout.fillWidth: true
        text: head.title
        font: Theme.display(15)
        elide: Text.ElideRight
        Accessible.role: Accessible.Heading
    }

    MicroLabel {
        Layout.alignment: Qt.AlignVCenter
        visible: head.trailing.length > 0
        text: head.trailing
    }
}
