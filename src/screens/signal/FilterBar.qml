import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// Which part of the chart is shown.
Item {
    id: bar

    required property SignalPresenter presenter

    implicitHeight: row.implicitHeight + 14

    RowLayout {
        id: row

        width: bar.width
        spacing: 8

        Repeater {
            model: bar.presenter.windows

            PillButton {
                required property int index
                required property string modelData

                text: modelData
                active: index === bar.presenter.window // qmllint disable unqualified
                onClicked: bar.presenter.chooseWindow(index) // qmllint disable unqualified
            }
        }

        ChoiceMenu {
            Layout.leftMargin: 8
            text: bar.presenter.laneTitle
            most: 220
            choices: bar.presenter.lanes
            chosen: bar.presenter.lane
            onPicked: index => bar.presenter.chooseLane(index)
        }

        PillButton {
            Layout.leftMargin: 8
            text: "Only on my drive"
            active: bar.presenter.onlyMine
            isChoice: false
            Accessible.checkable: true
            Accessible.checked: bar.presenter.onlyMine
            onClicked: bar.presenter.toggleOnlyMine()
        }

        Spinner {
            Layout.leftMargin: 4
            visible: bar.presenter.busy
        }

        Item {
            Layout.fillWidth: true
        }
    }

    Rule {
        anchors.bottom: bar.bottom
        width: bar.width
        color: Theme.rowRule
    }
}
