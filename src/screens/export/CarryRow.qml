import QtQuick
import QtQuick.Layouts
import Tarnwick.Components

/// One kind of work on a track, and whether it comes along.
ColumnLayout {
    id: row

    required property int index
    required property string name
    required property bool carries
    required property string word

    spacing: 0

    Rule {
        Layout.fillWidth: true
        visible: row.index > 0
        color: Theme.rowRule
    }

    RowLayout {
        Layout.fillWidth: true
        Layout.topMargin: 9
        Layout.bottomMargin: 9
        spacing: 10

        PlainText {
            Layout.fillWidth: true
            text: row.name
        }

        Icon {
            symbol: row.carries ? "checkmark.circle.fill" : "xmark.circle.fill"
            size: 16
            color: row.carries ? Theme.good : Theme.neutral400
        }

        PlainText {
            Layout.preferredWidth: 56
            text: row.word
            color: row.carries ? Theme.good : Theme.neutral500
            font: Theme.font(12.5, Font.DemiBold)
        }
    }
}
