import QtQuick
import Tarnwick.Components

/// A score as twenty ticks. A lit tick takes its colour from its own place: a full meter runs red,
/// amber, green.
Row {
    id: meter

    /// 0 to 100.
    required property int score

    readonly property int ticks: 20
    readonly property int filled: Math.round(meter.score / 100 * meter.ticks)
    readonly property real tickWidth: (meter.width - (meter.ticks - 1) * meter.spacing) / meter.ticks

    function colourAt(index: int): color {
        if (index >= meter.filled)
            return Theme.neutral200;
        const place = index / meter.ticks;
        return place < 0.55 ? Theme.accent : place < 0.8 ? Theme.warn : Theme.good;
    }

    spacing: 4
    height: 16
    Accessible.ignored: true

    Repeater {
        model: meter.ticks

        Rectangle {
            required property int index

            width: meter.tickWidth // qmllint disable unqualified
            height: 16
            radius: 2
            color: meter.colourAt(index) // qmllint disable unqualified
        }
    }
}
