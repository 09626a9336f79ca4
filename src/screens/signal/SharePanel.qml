import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// Whether the user shares plays, what the pool holds, and the way to the settings.
Card {
    id: panel

    required property SignalPresenter presenter

    spacing: 14
    bottomPadding: 14

    RowLayout {
        Layout.fillWidth: true
        spacing: 14

        Icon {
            symbol: panel.presenter.shareSymbol
            size: 24
            color: Theme.tint(panel.presenter.shareTint)
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 3

            PlainText {
                Layout.fillWidth: true
                text: panel.presenter.shareTitle
                font: Theme.display(15)
                elide: Text.ElideRight
                Accessible.role: Accessible.Heading
            }

            PlainText {
                Layout.fillWidth: true
                text: panel.presenter.shareLine
                color: Theme.inkSoft
                font: Theme.font(12.5)
                wrapMode: Text.Wrap
            }
        }

        ToggleSwitch {
            // Its ground under the pointer reaches past the switch, which stands flush.
            Layout.rightMargin: -rightPadding
            bare: true
            text: "Share your plays"
            hint: text
            on: panel.presenter.sharing
            onClicked: panel.presenter.toggleSharing()
        }
    }

    Rule {
        Layout.fillWidth: true
        color: Theme.rowRule
    }

    RowLayout {
        Layout.fillWidth: true
        spacing: 14

        PrimaryButton {
            visible: panel.presenter.sharing
            enabled: !panel.presenter.busy
            title: panel.presenter.contributeTitle
            symbol: "arrow.up.circle"
            onClicked: panel.presenter.contribute()
        }

        PlainText {
            visible: panel.presenter.pool.length > 0
            text: panel.presenter.pool
            color: Theme.inkFaint
            font: Theme.font(12)
        }

        Item {
            Layout.fillWidth: true
        }

        PillButton {
            id: chip

            text: panel.presenter.host
            symbol: "gearshape"
            most: 260
            isChoice: false
            onClicked: panel.presenter.toggleSetup()

            SetupPopover {
                opener: chip
                presenter: panel.presenter
            }
        }
    }
}
