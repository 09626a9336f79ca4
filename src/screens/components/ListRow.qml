import QtQuick

/// A row of a list that makes and reuses its rows. While one is put away, nobody sees it, a screen
/// reader neither.
Item {
    id: row

    /// Of the file that the row is about; none for none. It can be copied.
    property string path

    Accessible.role: Accessible.ListItem
    ListView.onPooled: row.visible = false
    ListView.onReused: row.visible = true
}
