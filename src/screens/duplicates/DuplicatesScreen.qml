import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The groups of copies, each as a card of rows.
Item {
    id: screen

    required property DuplicatesPresenter presenter

    ListScaffold {
        id: scaffold

        anchors.fill: parent
        visible: screen.presenter.hasLibrary
        title: "Duplicates"
        subtitle: "Same track, more than one copy. Keep the best, hold the rest for 30 days."
        model: screen.presenter.rows
        delegate: DuplicateRow {
            width: scaffold.width // qmllint disable unqualified
            margin: scaffold.padding // qmllint disable unqualified
            last: index === scaffold.list.count - 1 // qmllint disable unqualified
            onKeepPressed: (group, place) => screen.presenter.keep(group, place)
            onResolvePressed: (button, group) => LongRun.start(button, () => screen.presenter.resolve(group))
            onNotDuplicatePressed: (button, group) => LongRun.start(button, () => screen.presenter.markNotDuplicate(group))
        }

        WriteGateBanner {
            width: parent.width
            presenter: screen.presenter.gate
        }

        Card {
            width: parent.width

            RowLayout {
                Layout.fillWidth: true
                spacing: 18

                StatCell {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    value: screen.presenter.groups
                    label: "Groups"
                }

                StatCell {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    value: screen.presenter.redundant
                    label: "Redundant copies"
                }

                StatCell {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    value: screen.presenter.reclaimable
                    label: "Reclaimable"
                }
            }
        }

        Card {
            width: parent.width
            visible: !screen.presenter.hasGroups

            PlainText {
                Layout.fillWidth: true
                text: "No duplicate groups. Nothing to reclaim."
                color: Theme.inkSoft
                wrapMode: Text.Wrap
            }
        }
    }
}
