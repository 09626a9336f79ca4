import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The snapshots as a timeline, newest first. As high as its rows need, and no higher than `most`.
Card {
    id: card

    required property TimelinePresenter presenter
    /// What the card may take up.
    property real most: 480

    readonly property real rowHeight: 58

    RowLayout {
        Layout.fillWidth: true
        Layout.bottomMargin: 8
        spacing: 8

        SectionHead {
            Layout.fillWidth: true
            title: "Snapshots"
        }

        PlainButton {
            id: take

            Layout.topMargin: -6
            Layout.bottomMargin: -6
            Layout.rightMargin: -6
            padding: 6
            enabled: card.presenter.canTake
            text: "Take snapshot"
            hint: take.text
            contentItem: Icon {
                symbol: "plus.circle.fill"
                size: 18
                color: take.enabled ? Theme.accent : Theme.neutral400
            }
            onClicked: card.presenter.take()
        }
    }

    PlainText {
        Layout.fillWidth: true
        visible: !card.presenter.hasSnapshots
        text: "No snapshots yet. Take one before any change — it's the whole safety net."
        color: Theme.inkSoft
        font: Theme.font(12.5)
        wrapMode: Text.Wrap
    }

    RowKeys {
        id: keys

        list: rows
    }

    ListView {
        id: rows

        Layout.fillWidth: true
        Layout.preferredHeight: Math.max(0, Math.min(card.most - 82, card.rowHeight * rows.count))
        visible: card.presenter.hasSnapshots
        model: card.presenter.snapshots
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        reuseItems: true
        keyNavigationEnabled: false
        highlightFollowsCurrentItem: false
        currentIndex: 0
        Accessible.role: Accessible.List
        Accessible.name: "Snapshots"
        Keys.onPressed: event => event.accepted = keys.press(event.key)
        onCountChanged: keys.rowsChanged()

        delegate: SnapshotRow {
            width: rows.width // qmllint disable unqualified
            height: card.rowHeight // qmllint disable unqualified
            last: index === rows.count - 1 // qmllint disable unqualified
            canRollBack: card.presenter.canRollBack // qmllint disable unqualified
            onRollBackPressed: key => card.presenter.rollBack(key)
        }
    }
}
