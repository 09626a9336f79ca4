import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// What the run is about to go over, whether it fixes what is safe, and its button.
Card {
    id: card

    required property GigRunPresenter presenter

    RowLayout {
        Layout.fillWidth: true
        spacing: 14

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 3

            PlainText {
                Layout.fillWidth: true
                text: "Run the prep pipeline"
                font: Theme.display(15)
                elide: Text.ElideRight
                Accessible.role: Accessible.Heading
            }

            Figure {
                Layout.fillWidth: true
                text: card.presenter.summary
                color: Theme.inkSoft
                font: Theme.font(12.5)
            }
        }

        ToggleSwitch {
            text: "Apply safe fixes"
            on: card.presenter.applyFixes
            onClicked: card.presenter.applyFixes = !card.presenter.applyFixes
        }

        PrimaryButton {
            // Wide enough for either title, so that nothing beside it moves when a run begins.
            Layout.minimumWidth: 132
            title: card.presenter.runTitle
            symbol: "bolt.fill"
            enabled: !card.presenter.running
            onClicked: card.presenter.start()
        }
    }
}
