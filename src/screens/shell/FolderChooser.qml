import QtQuick
import QtQuick.Dialogs

/// The desktop's dialog for one existing folder.
FolderDialog {
    modality: Qt.WindowModal
}
