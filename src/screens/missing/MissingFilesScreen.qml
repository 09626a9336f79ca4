import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The files that Serato can't find, and where they might be.
Item {
    id: screen

    required property MissingPresenter presenter

    ListScaffold {
        id: scaffold

        anchors.fill: parent
        visible: screen.presenter.hasLibrary
        title: "Missing files"
        subtitle: "Serato can't find these on disk. Relink them to their real location and their cues, grids and play counts come along."
        model: screen.presenter.tracks
        delegate: MissingRow {
            width: scaffold.width // qmllint disable unqualified
            margin: scaffold.padding // qmllint disable unqualified
            last: index === scaffold.list.count - 1 // qmllint disable unqualified
            panelText: screen.presenter.panelText // qmllint disable unqualified
            candidates: screen.presenter.candidates // qmllint disable unqualified
            onTogglePressed: key => screen.presenter.toggle(key)
            onBrowsePressed: key => screen.presenter.browse(key)
            onDropPressed: (button, key) => LongRun.start(button, () => screen.presenter.drop(key))
            onRelinkPressed: (button, key, candidate) => LongRun.start(button, () => screen.presenter.relink(key, candidate))
        }

        WriteGateBanner {
            width: parent.width
            presenter: screen.presenter.gate
        }

        Card {
            width: parent.width
            visible: !screen.presenter.hasMissing

            PlainText {
                Layout.fillWidth: true
                text: "Nothing missing — every track resolves to a file on disk."
                color: Theme.inkSoft
                wrapMode: Text.Wrap
            }
        }

        SectionHead {
            width: parent.width
            visible: screen.presenter.hasMissing
            title: "Broken links"
        }
    }
}
