import QtQuick
import QtQuick.Templates as T
import Tarnwick.Components

/// Words that stand beside a control once the pointer has rested on it: what it is called, and its
/// key. Made when first needed.
Item {
    id: tip

    /// What the pointer rests on; none while it is elsewhere.
    property Item over: null
    property string text

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

            x: parent.width + 8
            y: (parent.height - height) / 2
            margins: 6
            delay: 700
            implicitWidth: implicitContentWidth + leftPadding + rightPadding
            implicitHeight: implicitContentHeight + topPadding + bottomPadding
            horizontalPadding: 9
            verticalPadding: 5
            closePolicy: T.Popup.NoAutoClose
            contentItem: PlainText {
                text: words.text
                color: Theme.onFill
                font: Theme.font(11.5, Font.Medium)
                Accessible.ignored: true
            }
            background: Rectangle {
                radius: 6
                color: Theme.ink
            }
        }
    }
}
