import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The findings of one tier, each with the way to where it is mended, or the line that says that
/// there are none.
Card {
    id: card

    required property string title
    required property color tint
    required property GigFindingModel findings
    required property string emptyText

    signal fixPressed(int row)

    readonly property bool isEmpty: rows.count === 0

    bottomPadding: card.isEmpty ? card.padding : 10

    RowLayout {
        Layout.fillWidth: true
        Layout.bottomMargin: card.isEmpty ? 10 : 6
        spacing: 9

        Rectangle {
            implicitWidth: 9
            implicitHeight: 9
            radius: 4.5
            color: card.tint
        }

        SectionHead {
            Layout.fillWidth: true
            title: card.title
        }
    }

    RowLayout {
        Layout.fillWidth: true
        visible: card.isEmpty
        spacing: 9

        Icon {
            symbol: "checkmark.circle.fill"
            size: 16
            color: Theme.good
        }

        PlainText {
            Layout.fillWidth: true
            text: card.emptyText
            color: Theme.inkSoft
            wrapMode: Text.Wrap
        }
    }

    Repeater {
        id: rows

        model: card.findings

        GigFindingRow {
            Layout.fillWidth: true
            tint: card.tint // qmllint disable unqualified
            onFixPressed: card.fixPressed(index) // qmllint disable unqualified
        }
    }
}
