import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The address of the server, and the button that asks it.
RowLayout {
    id: row

    required property SignalPresenter presenter

    function connectNow() {
        row.presenter.connectToServer();
        // Without an address there is nothing to see: it is still to be typed.
        if (field.length === 0)
            field.forceActiveFocus(Qt.OtherFocusReason);
    }

    spacing: 10

    LineField {
        id: field

        Layout.fillWidth: true
        label: "Signal server"
        text: row.presenter.server
        example: "https://signal.example.org"
        inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
        onTextEdited: row.presenter.server = field.text
        onAccepted: row.connectNow()
    }

    PrimaryButton {
        title: "Connect"
        symbol: "antenna.radiowaves.left.and.right"
        onClicked: row.connectNow()
    }
}
