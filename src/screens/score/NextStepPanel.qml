import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The worst dimension, and the way to where it can be improved.
Card {
    id: panel

    required property ScorePresenter presenter

    spacing: 10
    stretched: true

    MicroLabel {
        text: "One thing, right now"
    }

    PlainText {
        Layout.fillWidth: true
        Layout.topMargin: 6
        text: panel.presenter.nextName
        font: Theme.display(22)
        wrapMode: Text.Wrap
    }

    PlainText {
        Layout.fillWidth: true
        text: panel.presenter.nextDetail
        color: Theme.inkSoft
        font: Theme.font(13.5)
        wrapMode: Text.Wrap
    }

    Item {
        Layout.fillHeight: true
    }

    PlainButton {
        id: go

        Layout.leftMargin: -10
        Layout.bottomMargin: -6
        text: panel.presenter.nextButton
        horizontalPadding: 10
        verticalPadding: 6
        contentItem: IconLine {
            text: go.text
            symbol: "arrow.right"
            iconLast: true
            color: Theme.accent700
            font: Theme.font(12.5, Font.DemiBold)
        }
        onClicked: panel.presenter.goToNext()
    }
}
