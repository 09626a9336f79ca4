import Tarnwick.Components

/// A pill that opens a list of choices.
PillButton {
    id: menu

    property alias choices: list.choices
    property alias chosen: list.chosen

    signal picked(int index)

    symbol: "chevron.up.chevron.down"
    symbolLast: true
    isChoice: false
    onClicked: list.toggle()

    ChoiceList {
        id: list

        opener: menu
        title: menu.text
        onPicked: index => menu.picked(index)
    }
}
