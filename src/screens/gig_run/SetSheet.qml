import QtQuick
import QtQuick.Layouts
import Tarnwick.Components
import Tarnwick.Screens

/// The set in five figures.
Column {
    id: sheet

    required property GigRunPresenter presenter

    spacing: 12

    SectionHead {
        width: parent.width
        title: "Set sheet"
        trailing: "Ready to print"
    }

    Card {
        width: parent.width

        RowLayout {
            Layout.fillWidth: true
            spacing: 14

            SheetFigure {
                label: "Tracks"
                value: sheet.presenter.sheetTracks
            }

            SheetFigure {
                label: "Crates"
                value: sheet.presenter.sheetCrates
            }

            SheetFigure {
                label: "Length"
                value: sheet.presenter.sheetLength
            }

            SheetFigure {
                label: "Tempo path"
                value: sheet.presenter.sheetTempoPath
            }

            SheetFigure {
                label: "Keys"
                value: sheet.presenter.sheetKeys
            }
        }
    }
}
