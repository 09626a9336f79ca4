import QtQuick
import Tarnwick.Components

/// A symbol of the icon set in one colour, drawn for the screen's density so that its lines stay
/// sharp.
Item {
    id: icon

    /// Name of the symbol; none draws nothing.
    property string symbol
    property int size: 16
    property color color: Theme.ink
    property bool heavy: false

    readonly property real density: Screen.devicePixelRatio

    implicitWidth: icon.size
    implicitHeight: icon.size
    Accessible.ignored: true

    Image {
        width: Math.round(icon.size * icon.density) / icon.density
        height: width
        x: Math.round((icon.width - width) / 2 * icon.density) / icon.density
        y: Math.round((icon.height - height) / 2 * icon.density) / icon.density
        sourceSize.width: icon.size
        sourceSize.height: icon.size
        source: Icons.url(icon.symbol, icon.color, icon.heavy ? Icons.Heavy : Icons.Plain)
    }
}
