import QtQuick
import Tarnwick.Components

/// A pill that opens a list of choices, which may be a long one.
PillButton {
    id: menu

    /// Texts.
    required property var choices
    /// Which of them is the present one; -1 for none.
    property int chosen: -1

    readonly property int rowHeight: 32
    readonly property int rowsOfAPage: 9

    signal picked(int index)

    symbol: "chevron.up.chevron.down"
    symbolLast: true
    isChoice: false
    onClicked: list.opened ? list.close() : list.open()

    Popover {
        id: list

        opener: menu
        padding: 6
        onAboutToShow: rows.show(Math.max(0, menu.chosen))
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
                    rows.show(rows.currentIndex + menu.rowsOfAPage);
                    return true;
                case Qt.Key_PageUp:
                    rows.show(rows.currentIndex - menu.rowsOfAPage);
                    return true;
                default:
                    // A menu is left by Escape.
                    return key === Qt.Key_Tab || key === Qt.Key_Backtab;
                }
            }

            implicitWidth: 240
            implicitHeight: Math.min(rows.count, menu.rowsOfAPage) * menu.rowHeight
            focus: true
            clip: true
            reuseItems: true
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            model: menu.choices
            Keys.onPressed: event => event.accepted = rows.move(event.key)
            Accessible.role: Accessible.PopupMenu
            Accessible.name: menu.text

            delegate: PlainButton {
                id: choice

                required property int index
                required property string modelData

                width: rows.width // qmllint disable unqualified
                implicitHeight: menu.rowHeight // qmllint disable unqualified
                activeFocusOnTab: false
                ringGap: -2
                text: choice.modelData
                Accessible.selectable: true
                Accessible.selected: mark.visible
                ListView.onPooled: choice.visible = false
                ListView.onReused: choice.visible = true
                onHoveredChanged: {
                    if (choice.hovered)
                        rows.currentIndex = choice.index; // qmllint disable unqualified
                }
                onClicked: {
                    list.close(); // qmllint disable unqualified
                    menu.picked(choice.index); // qmllint disable unqualified
                }
                background: Rectangle {
                    radius: Theme.radius.control
                    color: choice.down ? Theme.pressFill : choice.activeFocus ? Theme.hoverFill : "transparent"
                }
                contentItem: Item { // qmllint disable deferred-property-id
                    Icon {
                        id: mark

                        x: 8
                        anchors.verticalCenter: parent.verticalCenter
                        visible: choice.index === menu.chosen // qmllint disable unqualified
                        symbol: "checkmark"
                        size: 12
                        color: Theme.accent
                        heavy: true
                    }

                    PlainText {
                        x: 28
                        width: parent.width - 36
                        anchors.verticalCenter: parent.verticalCenter
                        text: choice.text
                        font: Theme.font(12.5)
                        elide: Text.ElideRight
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
