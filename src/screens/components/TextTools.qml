import QtQuick
import QtQuick.Templates as T
import Tarnwick.Components

/// What can be done with the texts of a window over which this lies: a drag or a double press
/// selects one, Ctrl+C copies it, the second button offers to, and one that is cut short stands
/// beside the resting pointer whole. So does the hint of a control.
TextPicker {
    id: picker

    readonly property list<string> titles: ["Copy", "Copy path"]
    /// What can be copied: a text, and the path of the row in which it stands. Either may be empty.
    property list<string> offers
    /// What had the keyboard before the choices, and whether it showed so.
    property Item before: null
    property bool wasShown: false

    function offer(place: point, text: string, path: string) {
        picker.before = picker.Window.activeFocusItem;
        picker.wasShown = (picker.before as PlainButton)?.visualFocus ?? false;
        picker.offers = [text, path];
        spot.x = place.x;
        spot.y = place.y;
        menu.active = true;
        (menu.item as ChoiceList).open();
    }

    onAsked: (place, text, path) => picker.offer(place, text, path)
    onExplainedChanged: {
        tip.text = picker.explanation;
        tip.over = picker.explained;
    }

    // Below the letters.
    Rectangle {
        parent: picker.selected ?? picker
        anchors.fill: parent
        z: -1
        visible: picker.selected !== null
        color: Theme.accent200
    }

    Tip {
        id: tip

        below: true
    }

    // Text fields take these keys for themselves.
    Shortcut {
        sequences: ["Ctrl+C", "Ctrl+Ins"]
        onActivated: picker.copyNow()
    }

    Shortcut {
        sequences: ["Menu", "Shift+F10"]
        onActivated: picker.askByKey()
    }

    T.Control {
        id: spot
    }

    Loader {
        id: menu

        active: false
        // qmllint disable unqualified
        sourceComponent: ChoiceList {
            id: list

            opener: spot
            title: "Copy"
            choices: picker.titles.filter((title, index) => picker.offers[index].length > 0)
            onPicked: index => picker.copy(picker.offers[picker.titles.indexOf(list.choices[index])])
            onClosed: picker.before?.forceActiveFocus(picker.wasShown ? Qt.TabFocusReason : Qt.PopupFocusReason)
        }
        // qmllint enable unqualified
    }
}
