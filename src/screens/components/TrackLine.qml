import QtQuick
import Tarnwick.Components

/// A track in two lines of one line each.
Column {
    id: line

    /// Artist and title.
    required property string first
    /// What is known of the file.
    required property string second

    spacing: 2

    PlainText {
        width: line.width
        text: line.first
        // A file may bear neither artist nor title.
        Accessible.ignored: line.first.length === 0
        font: Theme.font(13.5)
        maximumLineCount: 1
        elide: Text.ElideRight
    }

    PlainText {
        width: line.width
        text: line.second
        color: Theme.inkFaint
        font: Theme.font(11)
        maximumLineCount: 1
        elide: Text.ElideRight
    }
}
