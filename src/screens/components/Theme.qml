pragma Singleton

import QtQuick
import Tarnwick.Components

/// The tokens of the window's look: warm paper, near-black ink, one vermilion. Every colour, radius
/// and font that a view uses has its name here. Sizes are in points of the layout.
QtObject {
    id: theme

    component Radii: QtObject {
        readonly property int window: 16
        readonly property int card: 15
        readonly property int control: 9
        readonly property int pill: 999
    }

    component Shadow: QtObject {
        required property color color
        required property real radius
        required property real y
    }

    readonly property color desk: "#e7e6e6"
    readonly property color ground: "#f3f2f2"
    readonly property color sidebar: "#eeedec"
    readonly property color surface: "#eae9e9"
    readonly property color card: "#ffffff"

    readonly property color neutral100: "#f8f4f4"
    readonly property color neutral200: "#eae7e7"
    readonly property color neutral300: "#d7d3d3"
    readonly property color neutral400: "#bab6b6"
    readonly property color neutral500: "#9b9797"
    readonly property color neutral600: "#7d7979"
    readonly property color neutral700: "#605d5d"
    readonly property color neutral800: "#444141"
    readonly property color neutral900: "#2d2b2b"

    readonly property color ink: "#201e1d"
    readonly property color inkSoft: Qt.alpha(theme.ink, 0.62)
    readonly property color inkFaint: Qt.alpha(theme.ink, 0.42)
    readonly property color rowRule: Qt.alpha(theme.ink, 0.055)
    readonly property color sectionRule: Qt.alpha(theme.ink, 0.09)
    readonly property color controlRule: Qt.alpha(theme.ink, 0.18)

    readonly property color accent: "#ec3013"
    readonly property color accent2: "#e15b47"
    readonly property color accent600: "#dd2b0f"
    readonly property color accent700: "#ae1800"
    readonly property color accent800: "#7c1405"
    readonly property color accent100: "#fff2ef"
    readonly property color accent200: "#ffe0d9"

    readonly property color good: "#2f7d55"
    readonly property color warn: "#b07d10"

    /// Text and marks on a filled ground.
    readonly property color onFill: "#ffffff"
    /// A control without a fill under the pointer, and while it is pressed.
    readonly property color hoverFill: Qt.alpha(theme.ink, 0.045)
    readonly property color pressFill: Qt.alpha(theme.ink, 0.085)
    readonly property color focusRing: theme.accent

    readonly property Radii radius: Radii {}

    readonly property Shadow windowShadow1: Shadow {
        color: Qt.alpha(theme.ink, 0.06)
        radius: 1
        y: 1
    }
    readonly property Shadow windowShadow2: Shadow {
        color: Qt.alpha(theme.ink, 0.24)
        radius: 35
        y: 28
    }
    readonly property Shadow buttonShadow: Shadow {
        color: Qt.alpha(theme.ink, 0.08)
        radius: 1
        y: 1
    }
    readonly property Shadow panelShadow: Shadow {
        color: Qt.alpha(theme.ink, 0.18)
        radius: 20
        y: 10
    }
    readonly property Shadow toastShadow: Shadow {
        color: Qt.alpha("black", 0.25)
        radius: 12
        y: 6
    }

    /// How long a change that moves or fades takes, in milliseconds.
    readonly property int motion: 160

    /// The font of a MicroLabel.
    readonly property font micro: Fonts.capitals(10, Font.DemiBold, 0.5)
    readonly property bool hasArchivo: Fonts.hasArchivo

    /// A text font. The weight is one of Font's.
    function font(size: real, weight = Font.Normal, tracking = 0): font {
        return Fonts.font(size, weight, tracking);
    }

    /// The font of headings and big figures.
    function display(size: real): font {
        return Fonts.font(size, Font.ExtraBold, 0);
    }

    function archivoName(weight: int): string {
        return Fonts.archivoName(weight);
    }

    /// The colour that a presenter asks for.
    function tint(value: int): color {
        return theme.tints[value];
    }

    readonly property list<color> tints: [theme.ink, theme.inkSoft, theme.inkFaint, theme.neutral500,
        theme.good, theme.warn, theme.accent, theme.accent2]
}
