import QtQml
import QtQuick
import Tarnwick.Screens

/// The keys that act wherever the keyboard is. None is a key that text fields take for themselves,
/// and undo is none of them: changes are taken back in the change log.
QtObject {
    id: shortcuts

    required property WindowPresenter presenter

    readonly property Shortcut rescan: Shortcut {
        sequences: ["F5", "Ctrl+R"]
        autoRepeat: false
        onActivated: shortcuts.presenter.sidebar.rescan()
    }
    readonly property Shortcut guide: Shortcut {
        sequence: "F1"
        autoRepeat: false
        onActivated: shortcuts.presenter.openGuide()
    }
    readonly property Shortcut quit: Shortcut {
        sequence: "Ctrl+Q"
        autoRepeat: false
        onActivated: Qt.quit()
    }
    readonly property Instantiator screens: Instantiator {
        model: 9

        Shortcut {
            required property int index

            sequence: `Ctrl+${index + 1}`
            onActivated: shortcuts.presenter.sidebar.select(index) // qmllint disable unqualified
        }
    }
}
