import QtQuick
import Tarnwick.Components

/// A small heading in capitals. What it reads out keeps the letter case that it was given.
PlainText {
    color: Theme.inkFaint
    font: Theme.micro
    maximumLineCount: 1
    elide: Text.ElideRight
}
