import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The tracks without a genre, with what could be filled in.
Item {
    id: screen

    required property TrackIdPresenter presenter
    /// A genre of the user's own, for a track without a suggestion. No control sets it as yet.
    property string manualGenre

    ListScaffold {
        id: scaffold

        anchors.fill: parent
        visible: screen.presenter.hasLibrary
        title: "Track ID"
        subtitle: "Fill in genres so crates, filters and exports work. Suggestions come from how you've tagged the same artists elsewhere."
        rowsGap: 0
        model: screen.presenter.tracks
        delegate: UntaggedRow {
            width: scaffold.width // qmllint disable unqualified
            margin: scaffold.padding // qmllint disable unqualified
            last: index === scaffold.list.count - 1 // qmllint disable unqualified
            canWrite: screen.presenter.canWrite // qmllint disable unqualified
            onGenrePressed: (button, key) => LongRun.start(button, () => screen.presenter.tag(key))
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
                    value: screen.presenter.untagged
                    label: "No genre"
                    tint: Theme.warn
                }

                StatCell {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    value: screen.presenter.suggested
                    label: "We can suggest"
                }

                StatCell {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    value: screen.presenter.ready
                    label: "≥95% — batch-ready"
                    tint: Theme.good
                }
            }
        }

        OfferCard {
            width: parent.width
            visible: screen.presenter.hasReady
            symbol: "wand.and.stars"
            text: screen.presenter.offer
            detail: "Each gets a snapshot-backed, reversible tag write."
            buttonTitle: screen.presenter.tagAllTitle
            buttonSymbol: "checkmark"
            onTaken: button => LongRun.start(button, () => screen.presenter.tagAll())
        }

        Card {
            width: parent.width
            visible: !screen.presenter.hasUntagged

            PlainText {
                Layout.fillWidth: true
                text: "Every track has a genre. Nothing to identify."
                color: Theme.good
                wrapMode: Text.Wrap
            }
        }

        CardHead {
            width: parent.width
            visible: screen.presenter.hasUntagged
            title: "Untagged"
            trailing: screen.presenter.untagged
        }
    }
}
