import QtQuick
import Tarnwick.Components
import Tarnwick.Screens

/// The groups of the sidebar with a row for each screen. Arrow keys, Home and End go from row to row.
ScrollArea {
    id: area

    required property SidebarPresenter presenter

    function focusRow(index: int) {
        const entry = rows.itemAt(Math.max(0, Math.min(rows.count - 1, index)));
        entry.row.forceActiveFocus(Qt.TabFocusReason); // qmllint disable
    }

    function focusByKey(key: int, index: int): bool {
        switch (key) {
        case Qt.Key_Down:
            area.focusRow(index + 1);
            return true;
        case Qt.Key_Up:
            area.focusRow(index - 1);
            return true;
        case Qt.Key_Home:
            area.focusRow(0);
            return true;
        case Qt.Key_End:
            area.focusRow(rows.count - 1);
            return true;
        default:
            return false;
        }
    }

    function tell(row: SidebarRow, shortcut: string) {
        if (row.hovered) {
            tip.text = shortcut.length > 0 ? `${row.title} (${shortcut})` : "";
            tip.over = row;
        } else if (tip.over === row) {
            tip.over = null;
        }
    }

    padding: 10
    activeFocusOnTab: false

    Tip {
        id: tip
    }

    Repeater {
        id: rows

        model: area.presenter.rows

        // qmllint disable unqualified
        Column {
            id: entry

            required property int index
            required property string heading
            required property string title
            required property string symbol
            required property string badge
            required property bool implemented
            required property bool selected
            required property string shortcut
            property alias row: row

            width: parent.width

            MicroLabel {
                visible: entry.heading.length > 0
                text: entry.heading
                leftPadding: 10
                topPadding: entry.index > 0 ? 14 : 4
                bottomPadding: 5
                Accessible.role: Accessible.Heading
            }

            SidebarRow {
                id: row

                width: parent.width
                title: entry.title
                symbol: entry.symbol
                badge: entry.badge
                implemented: entry.implemented
                selected: entry.selected
                onClicked: area.presenter.select(entry.index)
                onHoveredChanged: area.tell(row, entry.shortcut)
                Keys.onPressed: event => event.accepted = area.focusByKey(event.key, entry.index)
            }
        }
        // qmllint enable unqualified
    }
}
