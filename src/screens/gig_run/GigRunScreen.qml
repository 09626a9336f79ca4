import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// One pass over the library ahead of a gig, with a set sheet at its end.
Item {
    id: screen

    required property GigRunPresenter presenter

    ScreenScaffold {
        id: scaffold

        anchors.fill: parent
        visible: screen.presenter.hasLibrary
        title: "Gig run"
        subtitle: "One pass to get the whole library stage-ready, with a set sheet at the end."

        WriteGateBanner {
            width: parent.width
            presenter: screen.presenter.gate
        }

        RunCard {
            width: parent.width
            presenter: screen.presenter
        }

        Card {
            width: parent.width
            padding: 10

            Repeater {
                model: screen.presenter.steps

                RunStepRow {
                    Layout.fillWidth: true
                }
            }
        }

        SetSheet {
            width: parent.width
            visible: screen.presenter.hasSheet
            presenter: screen.presenter
        }
    }
}
