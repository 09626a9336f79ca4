import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// What can be done about a group.
RowLayout {
    id: foot

    required property string track

    signal resolvePressed(Item button)
    signal notDuplicatePressed(Item button)

    spacing: 10

    PrimaryButton {
        id: resolve

        activeFocusOnTab: false
        title: "Keep 1, hold the rest"
        symbol: "tray.and.arrow.down"
        Accessible.description: foot.track
        onClicked: foot.resolvePressed(resolve)
    }

    GhostButton {
        id: notDuplicate

        activeFocusOnTab: false
        title: "Not a dupe"
        Accessible.description: foot.track
        onClicked: foot.notDuplicatePressed(notDuplicate)
    }

    Item {
        Layout.fillWidth: true
    }
}
