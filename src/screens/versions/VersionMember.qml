import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// A cut of a song, as a choice among the others: what cut it is, which track, how often it was
/// played, and what would become of it.
PlainButton {
    id: member

    required property string cut
    required property string first
    required property string second
    required property string plays
    required property color playsTint
    required property bool kept

    activeFocusOnTab: false
    horizontalPadding: 10
    ringGap: -3
    text: member.first
    Accessible.description: member.cut
    Accessible.selectable: true
    Accessible.selected: member.kept

    contentItem: RowLayout {
        spacing: 12

        Icon {
            symbol: member.kept ? "largecircle.fill.circle" : "circle"
            size: 18
            color: member.kept ? Theme.accent : Theme.neutral500
        }

        PlainText {
            Layout.preferredWidth: 104
            text: member.cut
            font: Theme.font(13, Font.DemiBold)
            elide: Text.ElideRight
        }

        TrackLine {
            Layout.fillWidth: true
            first: member.first
            second: member.second
        }

        PlainText {
            Layout.preferredWidth: 70
            horizontalAlignment: Text.AlignRight
            verticalAlignment: Text.AlignVCenter
            text: member.plays
            color: member.playsTint
            font: Theme.font(12)
            // A file may claim any number of plays.
            fontSizeMode: Text.HorizontalFit
            minimumPointSize: 4
        }

        PlainText {
            Layout.preferredWidth: 64
            horizontalAlignment: Text.AlignRight
            text: member.kept ? "Keep" : "→ Archive"
            color: member.kept ? Theme.good : Theme.inkSoft
            font: Theme.font(11.5, Font.DemiBold)
        }
    }
}
