import QtQuick
import Tarnwick.Components
import Tarnwick.Screens

/// Crates that are nearly the same, tracks in none, and genres spelled in several ways.
Item {
    id: screen

    required property CrateHygienePresenter presenter

    ListScaffold {
        id: scaffold

        anchors.fill: parent
        visible: screen.presenter.hasHygiene
        title: "Crate hygiene"
        subtitle: "Tidy the shelves: merge crates that are basically the same, file loose tracks, and settle on one spelling per genre."
        model: screen.presenter.rows
        delegate: HygieneRow {
            width: scaffold.width // qmllint disable unqualified
            margin: scaffold.padding // qmllint disable unqualified
            last: index === scaffold.list.count - 1 // qmllint disable unqualified
            onActPressed: (button, key) => LongRun.start(button, () => screen.presenter.act(key))
        }

        WriteGateBanner {
            width: parent.width
            presenter: screen.presenter.gate
        }

        HygieneStats {
            width: parent.width
            presenter: screen.presenter
        }
    }
}
