import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// What the library can be exported to. The arrow keys go from row to row.
Card {
    id: card

    required property ExportPresenter presenter

    function focusRow(index: int) {
        const row = rows.itemAt(Math.max(0, Math.min(rows.count - 1, index)));
        row.forceActiveFocus(Qt.TabFocusReason);
    }

    bottomPadding: 12
    spacing: 2

    SectionHead {
        Layout.fillWidth: true
        Layout.bottomMargin: 8
        title: "Target"
    }

    Repeater {
        id: rows

        model: card.presenter.targets

        TargetRow {
            Layout.fillWidth: true
            Layout.leftMargin: -8
            Layout.rightMargin: -8
            onClicked: card.presenter.chooseTarget(index) // qmllint disable unqualified
            onUpPressed: card.focusRow(index - 1) // qmllint disable unqualified
            onDownPressed: card.focusRow(index + 1) // qmllint disable unqualified
        }
    }
}
