import QtQuick
import QtQuick.Templates as T
import Tarnwick.Components

/// Words that stand beside what the pointer has come to rest on: how a control is called, and its
/// key; or all of a text that is cut short. Made when first needed.
Item {
    id: tip

    /// What the pointer rests on; none while it is elsewhere.
    property Item over: null
    property string text
    /// Whether they stand below it.
    property bool below: false

    function follow() {
        if (tip.over && tip.text.length > 0) {
            bubble.active = true;
            bubble.item.parent = tip.over;
            bubble.item.text = tip.text;
            bubble.item.open();
        } else if (bubble.item) {
            bubble.item.close();
        }
    }

    visible: false
    onOverChanged: tip.follow()
    Accessible.ignored: true

    Loader {
        id: bubble

        active: false
        sourceComponent: T.ToolTip {
            id: words

            // What it stands beside may go while it is open.
            readonly property real besideX: words.parent ? words.parent.width + 8 : 0
            readonly property real middle: words.parent ? (words.parent.height - height) / 2 : 0
            readonly property real underneath: words.parent ? words.parent.height + 4 : 0

            x: tip.below ? 0 : words.besideX // qmllint disable unqualified
            y: tip.below ? words.underneath : words.middle // qmllint disable unqualified
            margins: 6
            delay: 700
            implicitWidth: Math.min(implicitContentWidth, 560) + leftPadding + rightPadding
            implicitHeight: implicitContentHeight + topPadding + bottomPadding
            horizontalPadding: 9
            verticalPadding: 5
            closePolicy: T.Popup.NoAutoClose
            contentItem: PlainText {
                text: words.text
                color: Theme.onFill
                font: Theme.font(11.5, Font.Medium)
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
            background: Rectangle {
                radius: 6
                color: Theme.ink
            }
        }
    }
}
