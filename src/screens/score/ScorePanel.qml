import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The overall score with its grade.
Card {
    id: panel

    required property ScorePresenter presenter

    spacing: 14

    MicroLabel {
        text: "Library score"
    }

    Row {
        Layout.topMargin: -10
        Layout.bottomMargin: -6
        spacing: 4

        PlainText {
            id: number

            text: panel.presenter.score
            color: Theme.tint(panel.presenter.tint)
            font: Theme.display(64)
            lineHeight: 64
            lineHeightMode: Text.FixedHeight
        }

        PlainText {
            anchors.baseline: number.baseline
            text: "/100"
            color: Theme.inkFaint
            font: Theme.display(20)
        }
    }

    TickMeter {
        Layout.fillWidth: true
        score: panel.presenter.score
    }

    PlainText {
        Layout.fillWidth: true
        text: panel.presenter.grade
        font: Theme.font(14, Font.DemiBold)
        wrapMode: Text.Wrap
    }

    PlainText {
        Layout.fillWidth: true
        text: panel.presenter.source
        color: Theme.inkFaint
        font: Theme.font(11.5)
        elide: Text.ElideMiddle
    }
}
