#pragma once

#include "platform/file_choice.h"
#include "support/screen_fixture.h"

#include <QColor>

namespace tarnwick::testing {

inline const QString engineNote =
    QStringLiteral("Engine's schema varies by version — confirm the library opens on your "
                   "hardware before a gig.");
inline const QString nothingToCompare =
    QStringLiteral("No previous export here yet — nothing to compare.");

inline const QString accent = QStringLiteral("#ffec3013");
inline const QString accent100 = QStringLiteral("#fffff2ef");
inline const QString good = QStringLiteral("#ff2f7d55");
inline const QString warn = QStringLiteral("#ffb07d10");
inline const QString ink = QStringLiteral("#ff201e1d");
inline const QString neutral400 = QStringLiteral("#ffbab6b6");
inline const QString neutral500 = QStringLiteral("#ff9b9797");
inline const QString inkFaint = QStringLiteral("#6b201e1d");
inline const QString inkSoft = QStringLiteral("#9e201e1d");
inline const QString white = QStringLiteral("#ffffffff");

inline QString colourOf(const QQuickItem *item)
{
    return item->property("color").value<QColor>().name(QColor::HexArgb);
}

inline bool isOf(const QQuickItem *item, const char *type)
{
    return QByteArray(item->metaObject()->className()).startsWith(type);
}

/// All items of a type that can be seen, in drawing order.
inline QList<QQuickItem *> partsOf(QQuickItem *root, const char *type)
{
    QList<QQuickItem *> found;
    if (!root || !root->isVisible())
        return found;
    if (isOf(root, type))
        found += root;
    for (QQuickItem *child : root->childItems())
        found += partsOf(child, type);
    return found;
}

/// The icons that can be seen, each with its colour.
inline QStringList iconsOf(QQuickItem *root)
{
    QStringList icons;
    for (const QQuickItem *icon : partsOf(root, "Icon_QMLTYPE")) {
        if (!icon->property("symbol").toString().isEmpty())
            icons += icon->property("symbol").toString() + QLatin1Char(' ') + colourOf(icon);
    }
    return icons;
}

/// A user who looks at the export screen.
class ExportUser : public ScreenFixture
{
public:
    bool open() { return openOn(Screen::Export, QStringLiteral("ExportScreen")); }
    void addTracks(int count)
    {
        for (int number = 1; number <= count; ++number)
            addTrack(QStringLiteral("Music/%1.mp3").arg(number));
    }
    /// Where exports go. Not there at first.
    QString folder() const { return root().path(QStringLiteral("GIG USB")); }

    QQuickItem *screen() const { return partsOf(content(), "ExportScreen_QMLTYPE").value(0); }
    /// A card of the screen by its type; null while it is hidden.
    QQuickItem *card(const char *type) const { return partsOf(screen(), type).value(0); }
    QString colourOfText(const QString &words) const { return colourOf(text(words)); }
    QString focused() const { return accessibleName(window()->activeFocusItem()); }
    bool showsToast(const QString &message) const
    {
        return itemNamed(content(), message, QAccessible::AlertMessage);
    }

    /// Chooses a folder as in the dialog.
    bool choose(const QString &path, Way way = Way::ScreenReader)
    {
        const platform::ScopedFileDialog dialog(
            [&](const platform::FileQuestion &, const platform::FileChosen &chosen) {
                chosen(path);
            });
        return press(partsOf(card("ExportCard"), "GhostButton").value(0), way);
    }
    bool exportAndWait(const QString &button)
    {
        return press(this->button(button), Way::ScreenReader) && waitUntilIdle() &&
               waitForPicture();
    }
};

} // namespace tarnwick::testing
