import QtQuick
import Tarnwick.Components

/// A text with figures in it that must not tremble, or that stand below each other.
TabularText {
    id: figure

    color: Theme.ink
    font: Theme.font(13)
    Accessible.role: Accessible.StaticText
    Accessible.name: figure.text
}
