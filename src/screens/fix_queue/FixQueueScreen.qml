import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// Everything worth fixing in one list, with the safe fixes one press away.
Item {
    id: screen

    required property FixQueuePresenter presenter

    ListScaffold {
        id: scaffold

        anchors.fill: parent
        visible: screen.presenter.hasLibrary
        title: "Fix queue"
        subtitle: "Everything worth fixing, most serious first. Green ones are safe to automate."
        model: screen.presenter.issues
        delegate: IssueRow {
            width: scaffold.width // qmllint disable unqualified
            margin: scaffold.padding // qmllint disable unqualified
            last: index === scaffold.list.count - 1 // qmllint disable unqualified
            onFixPressed: (button, key) => LongRun.start(button, () => screen.presenter.fix(key))
            onDecidePressed: key => screen.presenter.decide(key)
        }

        WriteGateBanner {
            width: parent.width
            presenter: screen.presenter.gate
        }

        Item {
            width: parent.width
            height: 36

            Row {
                anchors.verticalCenter: parent.verticalCenter
                spacing: 8

                Repeater {
                    model: screen.presenter.filters

                    PillButton {
                        required property int index
                        required property string modelData

                        text: modelData
                        active: index === screen.presenter.filter // qmllint disable unqualified
                        onClicked: screen.presenter.filter = index // qmllint disable unqualified
                    }
                }
            }

            PrimaryButton {
                id: fixAll

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: screen.presenter.hasSafe
                title: screen.presenter.fixAllTitle
                symbol: "bolt.fill"
                onClicked: LongRun.start(fixAll, () => screen.presenter.fixAllSafe())
            }
        }

        Card {
            width: parent.width
            visible: screen.presenter.emptyText.length > 0

            PlainText {
                Layout.fillWidth: true
                text: screen.presenter.emptyText
                color: Theme.inkSoft
                wrapMode: Text.Wrap
            }
        }
    }
}
