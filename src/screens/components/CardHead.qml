import QtQuick
import Tarnwick.Components

/// The upper end of a card whose other pieces are the rows of a list, with the title of both.
CardSlice {
    id: head

    required property string title
    property string trailing

    implicitHeight: words.y + words.implicitHeight + 6
    first: true

    SectionHead {
        id: words

        y: head.padding
        width: parent.width
        title: head.title
        trailing: head.trailing
    }
}
