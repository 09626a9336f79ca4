import QtQuick
import Tarnwick.Components

/// A hairline.
Rectangle {
    implicitWidth: 1
    implicitHeight: 1
    color: Theme.sectionRule
}
