import QtQuick
import Tarnwick.Components

/// A column that scrolls: by wheel, by the keys of a page, and by itself to whatever control in it
/// has the keyboard. Takes the keyboard itself while there is more than it can show.
Flickable {
    id: area

    default property alias content: column.data
    property alias spacing: column.spacing
    property real padding: 0
    property real line: 48

    readonly property real lastY: Math.max(0, area.contentHeight - area.height)

    function scrollTo(y: real) {
        area.contentY = Math.max(0, Math.min(area.lastY, y));
    }

    function scrollByKey(key: int): bool {
        switch (key) {
        case Qt.Key_PageDown:
            area.scrollTo(area.contentY + area.height - area.line);
            return true;
        case Qt.Key_PageUp:
            area.scrollTo(area.contentY - area.height + area.line);
            return true;
        case Qt.Key_Down:
            area.scrollTo(area.contentY + area.line);
            return true;
        case Qt.Key_Up:
            area.scrollTo(area.contentY - area.line);
            return true;
        case Qt.Key_Home:
            area.scrollTo(0);
            return true;
        case Qt.Key_End:
            area.scrollTo(area.lastY);
            return true;
        default:
            return false;
        }
    }

    contentWidth: width
    contentHeight: column.implicitHeight + 2 * area.padding
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.VerticalFlick
    clip: true
    activeFocusOnTab: area.lastY > 0
    Keys.onPressed: event => event.accepted = area.scrollByKey(event.key)
    Accessible.role: Accessible.Pane

    Column {
        id: column

        x: area.padding
        y: area.padding
        width: area.width - 2 * area.padding
    }

    FocusKeeper {
        area: area
    }
}
