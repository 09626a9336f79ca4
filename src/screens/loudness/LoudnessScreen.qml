import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// How far each track stands from the level of the library, with the gain that evens it out.
Item {
    id: screen

    required property LoudnessPresenter presenter

    ListScaffold {
        id: scaffold

        anchors.fill: parent
        visible: screen.presenter.hasLibrary
        title: "Loudness"
        subtitle: "Even out levels across the library so nothing jumps in the mix. Gain is written as a tag — your files are never re-encoded."
        rowsGap: 0
        model: screen.presenter.tracks
        delegate: StandingRow {
            width: scaffold.width // qmllint disable unqualified
            margin: scaffold.padding // qmllint disable unqualified
            last: index === scaffold.list.count - 1 // qmllint disable unqualified
            canWrite: screen.presenter.canWrite // qmllint disable unqualified
            onLevelPressed: (button, key) => LongRun.start(button, () => screen.presenter.level(key))
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
                    value: screen.presenter.analysed
                    label: "Analysed"
                }

                StatCell {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    value: screen.presenter.average
                    label: "Avg autogain"
                }

                StatCell {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    value: screen.presenter.outliers
                    label: "Off by ≥1.5 dB"
                    tint: Theme.tint(screen.presenter.outliersTint)
                }
            }
        }

        OfferCard {
            width: parent.width
            visible: screen.presenter.hasOutliers
            symbol: "speaker.wave.3.fill"
            text: screen.presenter.offer
            buttonTitle: screen.presenter.levelAllTitle
            buttonSymbol: "slider.horizontal.3"
            onTaken: button => LongRun.start(button, () => screen.presenter.levelAll())
        }

        Card {
            width: parent.width
            visible: !screen.presenter.hasTracks

            PlainText {
                Layout.fillWidth: true
                text: "No loudness data yet. Analyse tracks in Serato, then rescan."
                color: Theme.inkSoft
                wrapMode: Text.Wrap
            }
        }

        CardHead {
            width: parent.width
            visible: screen.presenter.hasTracks
            title: "Deviation from library average"
        }
    }
}
