import QtQuick
import Tarnwick.Components
import Tarnwick.Screens

/// Whether changes are possible. Stands at the top of the screens that make some.
Callout {
    id: banner

    required property WriteGatePresenter presenter

    symbol: banner.presenter.symbol
    tint: Theme.tint(banner.presenter.tint)
    text: banner.presenter.text
}
