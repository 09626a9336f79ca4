import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// Says that nothing has been lost, and what happens when something is.
Card {
    RowLayout {
        Layout.fillWidth: true
        spacing: 14

        Icon {
            Layout.alignment: Qt.AlignTop
            symbol: "checkmark.seal.fill"
            size: 22
            color: Theme.good
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 4

            PlainText {
                Layout.fillWidth: true
                text: "No cue or grid losses."
                font: Theme.font(13.5, Font.DemiBold)
                wrapMode: Text.Wrap
            }

            PlainText {
                Layout.fillWidth: true
                text: "Every protected track still has the cues and grid the vault captured. If Serato ever drops them — after a re-analyze, a re-import, or a file swap — they'll show up here, ready to restore."
                color: Theme.inkSoft
                font: Theme.font(12.5)
                lineHeight: 1.2
                wrapMode: Text.Wrap
            }
        }
    }
}
