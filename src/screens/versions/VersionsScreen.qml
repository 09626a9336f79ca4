import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The songs that are there in several cuts, each as a card of rows.
Item {
    id: screen

    required property VersionsPresenter presenter

    ListScaffold {
        id: scaffold

        anchors.fill: parent
        visible: screen.presenter.hasLibrary
        title: "Versions"
        subtitle: "Different cuts of the same track. Keep the one you play, tuck the rest into an Archive crate — still in your library, just out of the way."
        model: screen.presenter.rows
        delegate: VersionRow {
            width: scaffold.width // qmllint disable unqualified
            margin: scaffold.padding // qmllint disable unqualified
            last: index === scaffold.list.count - 1 // qmllint disable unqualified
            onChoosePressed: (group, place) => screen.presenter.choose(group, place)
            onArchivePressed: (button, group) => LongRun.start(button, () => screen.presenter.archive(group))
        }

        WriteGateBanner {
            width: parent.width
            presenter: screen.presenter.gate
        }

        Card {
            width: parent.width
            visible: screen.presenter.hasNoGroups

            PlainText {
                Layout.fillWidth: true
                text: "No obvious alternate cuts. Every song appears once."
                color: Theme.good
                wrapMode: Text.Wrap
            }
        }
    }
}
