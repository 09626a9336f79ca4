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
    readonly property int edgeAcross: Shadows.edge(shadow.blur, shadow.corner, parent.width)
    readonly property int edgeDown: Shadows.edge(shadow.blur, shadow.corner, parent.height)

    z: -1
    x: -shadow.reach
    y: shadow.offset - shadow.reach
    width: parent.width + 2 * shadow.reach
    height: parent.height + 2 * shadow.reach
    border.left: shadow.edgeAcross
    border.right: shadow.edgeAcross
    border.top: shadow.edgeDown
    border.bottom: shadow.edgeDown
    source: !shadow.visible ? "" : Shadows.url(shadow.color, shadow.blur, shadow.corner, parent.width, parent.height)
    Accessible.ignored: true
}
