import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The crates to pick from. As high as its rows need, and no higher than `most`.
Card {
    id: card

    required property GigCheckPresenter presenter
    /// What the card may take up.
    property real most: 480

    readonly property real rowHeight: 36

    bottomPadding: card.presenter.hasCrates ? 10 : card.padding

    SectionHead {
        Layout.fillWidth: true
        Layout.bottomMargin: 8
        title: "Crates"
        trailing: card.presenter.picked
    }

    PlainText {
        Layout.fillWidth: true
        visible: !card.presenter.hasCrates
        text: "No crates found in this library."
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
        Layout.leftMargin: -8
        Layout.rightMargin: -8
        Layout.preferredHeight: Math.min(card.rowHeight * rows.count, Math.max(card.most - 54, 4 * card.rowHeight))
        visible: card.presenter.hasCrates
        model: card.presenter.crates
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        reuseItems: true
        keyNavigationEnabled: false
        highlightFollowsCurrentItem: false
        currentIndex: 0
        Accessible.role: Accessible.List
        Accessible.name: "Crates"
        Keys.onPressed: event => event.accepted = keys.press(event.key)
        onCountChanged: keys.rowsChanged()

        delegate: GigCrateRow {
            width: rows.width // qmllint disable unqualified
            height: card.rowHeight // qmllint disable unqualified
            onTogglePressed: name => card.presenter.toggle(name)
        }
    }
}
