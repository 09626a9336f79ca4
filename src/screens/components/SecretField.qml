import QtQuick
import Tarnwick.Components

/// A field whose text nobody else may read. What is typed is its `value`: a screen reader, and with
/// it any program that listens in the same way, is told the `text`, which are bullets.
LineField {
    id: field

    readonly property string text: field.displayText

    echoMode: TextInput.Password
    passwordMaskDelay: 0
    inputMethodHints: Qt.ImhHiddenText | Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
    // Of such a field Qt tells no name.
    placeholderText: field.label
}
