import QtQuick
import Tarnwick.Components

/// The shadow of its parent, which must have round corners of the radius `corner`.
BorderImage {
    id: shadow

    required property color color
    required property real blur
    required property real offset
    required property real corner

    readonly property int reach: Shadows.reach(shadow.blur)
    readonly property int edge: Shadows.edge(shadow.blur, shadow.corner)

    z: -1
    x: -shadow.reach
    y: shadow.offset - shadow.reach
    width: parent.width + 2 * shadow.reach
    height: parent.height + 2 * shadow.reach
    border.left: shadow.edge
    border.right: shadow.edge
    border.top: shadow.edge
    border.bottom: shadow.edge
    source: Shadows.url(shadow.color, shadow.blur, shadow.corner)
    Accessible.ignored: true
}
