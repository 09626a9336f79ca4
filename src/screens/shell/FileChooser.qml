import QtQuick
import QtQuick.Dialogs

/// The desktop's dialog for one existing file.
FileDialog {
    fileMode: FileDialog.OpenFile
}
