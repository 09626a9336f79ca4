import QtQuick
import QtQuick.Templates as T
import Tarnwick.Components

/// A field for one line of text.
T.TextField {
    id: field

    /// What a screen reader calls it.
    required property string label
    /// What might be typed, shown until something is.
    property string example
    /// The same as `text`.
    property alias value: field.text

    implicitWidth: 240
    implicitHeight: 34
    leftPadding: 12
    rightPadding: 12
    font: Theme.font(13)
    color: Theme.ink
    selectionColor: Theme.accent200
    selectedTextColor: Theme.ink
    selectByMouse: true
    verticalAlignment: TextInput.AlignVCenter
    Accessible.name: field.label
    // Qt makes it the description as well, whenever a screen reader comes.
    placeholderText: field.example
    Accessible.description: field.placeholderText
    background: Rectangle {
        radius: Theme.radius.control
        color: Theme.card
        border.color: Theme.controlRule
    }

    PlainText {
        x: field.leftPadding
        width: field.width - field.leftPadding - field.rightPadding
        height: field.height
        visible: field.length === 0 && field.preeditText.length === 0
        text: field.example
        color: Theme.inkSoft
        font: field.font
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    FocusRing {
        visible: field.activeFocus
        gap: 0
    }
}
