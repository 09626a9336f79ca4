import QtQuick
import Tarnwick.Components

/// A screen on whose content a list follows that may be of any length: title, a line about it and
/// its content scroll with the rows. Rows are made as they come into view.
///
/// The controls of a row must be no stops of Tab themselves: RowKeys takes the keyboard through
/// them.
FocusScope {
    id: scaffold

    required property string title
    property string subtitle
    property real padding: 26
    /// Room between the content and the first row; none where both are pieces of one card.
    property real rowsGap: 18
    property alias model: rows.model
    property alias delegate: rows.delegate
    readonly property alias list: rows
    default property alias content: head.content

    readonly property bool scrolls: rows.contentHeight > rows.height

    Item {
        id: stop

        anchors.fill: parent
        activeFocusOnTab: scaffold.scrolls
        Accessible.role: Accessible.Pane
        Accessible.name: scaffold.title
        Keys.onPressed: event => event.accepted = keys.scroll(event.key)
    }

    ListView {
        id: rows

        anchors.fill: parent
        boundsBehavior: Flickable.StopAtBounds
        flickableDirection: Flickable.VerticalFlick
        clip: true
        reuseItems: true
        cacheBuffer: 240
        keyNavigationEnabled: false
        highlightFollowsCurrentItem: false
        currentIndex: 0
        Accessible.role: Accessible.List
        Accessible.name: scaffold.title
        Keys.onPressed: event => event.accepted = keys.press(event.key)
        onCountChanged: keys.rowsChanged()
        // The head may grow once its texts are laid out. It does so upwards, out of a view that
        // shows its top.
        onOriginYChanged: {
            if (rows.contentY <= rows.lastTop)
                rows.contentY = rows.originY;
            rows.lastTop = rows.originY;
        }

        property real lastTop: 0

        header: Item {
            width: rows.width // qmllint disable unqualified
            height: head.implicitHeight + scaffold.padding + scaffold.rowsGap // qmllint disable unqualified
        }
        footer: Item {
            width: rows.width // qmllint disable unqualified
            height: scaffold.padding // qmllint disable unqualified
        }

        FocusKeeper {
            area: rows
        }
    }

    ListHead {
        id: head

        parent: rows.headerItem
        x: scaffold.padding
        y: scaffold.padding
        width: scaffold.width - 2 * scaffold.padding
        title: scaffold.title
        subtitle: scaffold.subtitle
    }

    RowKeys {
        id: keys

        list: rows
    }

    // As many rows may go as come, and a row that stays may lose the control with the keyboard.
    Connections {
        target: rows.model
        function onRowsRemoved() {
            keys.rowsChanged();
        }
        function onDataChanged() {
            keys.rowsChanged();
        }
    }

    FocusRing {
        visible: stop.activeFocus
        corner: Theme.radius.window
        gap: -3
    }
}
