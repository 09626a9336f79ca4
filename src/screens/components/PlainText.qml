import QtQuick
import Tarnwick.Components

/// Text as it stands: never taken for markup, whatever a file calls itself.
Text {
    id: text

    color: Theme.ink
    font: Theme.font(13)
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text.text
}
