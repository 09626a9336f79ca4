import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The settings for Signal. Each keystroke is kept but the server's: that takes the button.
Popover {
    id: setup

    required property SignalPresenter presenter

    function follow() {
        if (setup.presenter.showsSetup)
            setup.open();
        else
            setup.close();
    }

    x: setup.opener.width - setup.width
    onAboutToHide: setup.presenter.closeSetup()

    Connections {
        target: setup.presenter

        function onChanged() {
            setup.follow();
        }
    }

    contentItem: ColumnLayout { // qmllint disable deferred-property-id
        spacing: 0

        PlainText {
            Layout.bottomMargin: 6
            text: "Signal server"
            font: Theme.font(12, Font.DemiBold)
        }

        ServerField {
            Layout.fillWidth: true
            Layout.preferredWidth: 360
            presenter: setup.presenter
        }

        PlainText {
            Layout.topMargin: 16
            Layout.bottomMargin: 6
            text: "Access key"
            font: Theme.font(12, Font.DemiBold)
        }

        SecretField {
            id: key

            Layout.fillWidth: true
            label: "Access key"
            value: setup.presenter.apiKey
            example: "from your crew"
            onTextEdited: setup.presenter.apiKey = key.value
        }

        PlainText {
            Layout.topMargin: 16
            Layout.bottomMargin: 6
            text: "City"
            font: Theme.font(12, Font.DemiBold)
        }

        LineField {
            id: city

            Layout.fillWidth: true
            label: "City"
            text: setup.presenter.city
            example: "optional, e.g. Detroit"
            onTextEdited: setup.presenter.city = city.text
        }

        PlainText {
            Layout.fillWidth: true
            Layout.topMargin: 14
            text: "Your DJ id is a random code stored only on this Mac — never your name."
            color: Theme.inkSoft
            font: Theme.font(11.5)
            lineHeight: 1.2
            wrapMode: Text.Wrap
        }

        Rule {
            Layout.fillWidth: true
            Layout.topMargin: 14
            Layout.bottomMargin: 8
            color: Theme.rowRule
        }

        TextButton {
            Layout.leftMargin: -10
            text: "Leave & erase my plays"
            tint: Theme.accent700
            onClicked: setup.presenter.leave()
        }
    }
}
