import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// Stands in the place of a screen that is still to come.
ScreenScaffold {
    id: screen

    required property ComingSoonPresenter presenter

    title: screen.presenter.title

    Card {
        width: parent.width
        spacing: 12

        RowLayout {
            spacing: 10

            Icon {
                symbol: screen.presenter.symbol
                size: 22
                color: Theme.accent
            }

            Rectangle {
                implicitWidth: note.implicitWidth + 16
                implicitHeight: note.implicitHeight + 8
                radius: height / 2
                color: Theme.accent100

                PlainText {
                    id: note

                    anchors.centerIn: parent
                    text: screen.presenter.note
                    color: Theme.accent700
                    font: Theme.font(11, Font.DemiBold)
                }
            }
        }

        PlainText {
            Layout.fillWidth: true
            text: "This screen is designed and scheduled."
            font: Theme.display(17)
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
        }

        PlainText {
            Layout.fillWidth: true
            Layout.maximumWidth: 720
            text: screen.presenter.text
            color: Theme.inkSoft
            font: Theme.font(13)
            lineHeight: 1.3
            wrapMode: Text.Wrap
        }
    }
}
