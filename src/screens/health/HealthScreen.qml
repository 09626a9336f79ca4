import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The triage of the library: what is wrong, how long it takes, where to begin, and a profile.
Item {
    id: screen

    required property HealthPresenter presenter

    ScreenScaffold {
        anchors.fill: parent
        visible: screen.presenter.hasLibrary
        title: "Health"
        subtitle: "A quick triage of your library and the shortest path to a clean one."

        TriageRow {
            width: parent.width
            presenter: screen.presenter
        }

        Card {
            width: parent.width
            bottomPadding: screen.presenter.hasSteps ? 8 : 18

            SectionHead {
                Layout.fillWidth: true
                Layout.bottomMargin: screen.presenter.hasSteps ? 6 : 10
                title: "Do this first"
            }

            PlainText {
                Layout.fillWidth: true
                visible: !screen.presenter.hasSteps
                text: "Nothing urgent. Your library is in good shape."
                color: Theme.good
                wrapMode: Text.Wrap
            }

            Repeater {
                model: screen.presenter.steps

                StepRow {
                    Layout.fillWidth: true
                    onGoPressed: screen.presenter.goTo(index) // qmllint disable unqualified
                }
            }
        }

        RowLayout {
            width: parent.width
            spacing: 18

            ProfileCard {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                title: "Genres"
                trailing: screen.presenter.genresNote
                bars: screen.presenter.genres
                tint: Theme.accent2
                emptyText: screen.presenter.hasGenres ? "" : "Almost nothing is tagged with a genre yet."
            }

            ProfileCard {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                title: "BPM range"
                trailing: screen.presenter.tempoNote
                bars: screen.presenter.tempos
                tint: Theme.ink
            }
        }
    }
}
