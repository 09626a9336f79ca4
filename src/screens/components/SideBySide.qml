import QtQuick

/// A main column that scrolls by itself, and a narrow one of fixed width beside it.
Item {
    id: pair

    property Item main
    property Item side
    property real sideWidth: 320

    Item {
        id: left

        width: pair.width - pair.sideWidth - 26
        height: pair.height
        children: [pair.main]
    }

    Item {
        id: right

        x: pair.width - pair.sideWidth - 26
        y: 26
        width: pair.sideWidth
        height: pair.height - 52
        children: [pair.side]
    }
}
