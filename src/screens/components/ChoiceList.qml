import QtQuick
import QtQuick.Window
import Tarnwick.Components

/// The choices of a button that opens them, of which there may be many: below the button, or above
/// it where there is no room below.
Popover {
    id: list

    required property string title
    /// Texts.
    property var choices: []
    /// Which of them is the present one; -1 for none.
    property int chosen: -1

    readonly property int rowHeight: 32
    readonly property int rowsOfAPage: 9
    property bool opensUp: false

    signal picked(int index)

    function toggle() {
        if (list.opened)
            list.close();
        else
            list.open();
    }

    y: list.opensUp ? -list.height - 4 : list.opener.height + 4
    padding: 6
    onAboutToShow: {
        const below = list.opener.mapToItem(null, 0, list.opener.height).y + 4;
        list.opensUp = below + list.implicitHeight + list.margins > list.opener.Window.height;
        rows.show(Math.max(0, list.chosen));
    }
    contentItem: ListView { // qmllint disable deferred-property-id
        id: rows

        function show(row: int) {
            rows.currentIndex = Math.min(rows.count - 1, Math.max(0, row));
            rows.positionViewAtIndex(rows.currentIndex, ListView.Contain);
        }

        function move(key: int): bool {
            switch (key) {
            case Qt.Key_Home:
                rows.show(0);
                return true;
            case Qt.Key_End:
                rows.show(rows.count - 1);
                return true;
            case Qt.Key_PageDown:
                rows.show(rows.currentIndex + list.rowsOfAPage);
                return true;
            case Qt.Key_PageUp:
                rows.show(rows.currentIndex - list.rowsOfAPage);
                return true;
            default:
                // A menu is left by Escape.
                return key === Qt.Key_Tab || key === Qt.Key_Backtab;
            }
        }

        implicitWidth: Math.max(240, list.opener.width - 2 * list.padding)
        implicitHeight: Math.min(rows.count, list.rowsOfAPage) * list.rowHeight
        focus: true
        clip: true
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        model: list.choices
        Keys.onPressed: event => event.accepted = rows.move(event.key)
        Accessible.role: Accessible.PopupMenu
        Accessible.name: list.title

        delegate: MenuEntry {
            id: choice

            required property int index
            required property string modelData

            width: rows.width // qmllint disable unqualified
            implicitHeight: list.rowHeight // qmllint disable unqualified
            text: choice.modelData
            current: choice.index === list.chosen // qmllint disable unqualified
            ListView.onPooled: choice.visible = false
            ListView.onReused: choice.visible = true
            onHoveredChanged: {
                if (choice.hovered)
                    rows.currentIndex = choice.index; // qmllint disable unqualified
            }
            onClicked: {
                list.close(); // qmllint disable unqualified
                list.picked(choice.index); // qmllint disable unqualified
            }
        }
    }
}
