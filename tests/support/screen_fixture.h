#pragma once

#include "screens/shell/views.h"
#include "support/window_fixture.h"

#include <QQmlEngine>

#include <algorithm>

namespace tarnwick::testing {

/// The ways in which a person presses something.
enum class Way { Pointer, Space, Return, ScreenReader };

inline bool press(QQuickItem *item, Way way)
{
    if (!item)
        return false;
    switch (way) {
    case Way::Pointer:
        return pressByPointer(item);
    case Way::Space:
        return pressByKey(item, Qt::Key_Space);
    case Way::Return:
        return pressByKey(item, Qt::Key_Return);
    case Way::ScreenReader:
        return pressByScreenReader(item);
    }
    return false;
}

/// Data rows for a press in every way.
inline void everyWay()
{
    QTest::addColumn<Way>("way");
    QTest::newRow("pointer") << Way::Pointer;
    QTest::newRow("space") << Way::Space;
    QTest::newRow("return") << Way::Return;
    QTest::newRow("screen reader") << Way::ScreenReader;
}

/// A user with a home library who looks at one screen of it.
class ScreenFixture : public WindowFixture
{
public:
    /// Adds a file with its track; gives the path as the database holds it.
    QString addTrack(const QString &name, const QByteArrayList &moreFields = {},
                     const QByteArray &content = "not really audio")
    {
        const QString path = writeAudio(name, content);
        addRecord(path, moreFields);
        return path;
    }
    /// Adds a track whose file is nowhere.
    void addMissingTrack(const QString &name, const QByteArrayList &moreFields = {})
    {
        addRecord(home(name).sliced(1), moreFields);
    }

    /// Writes the database of all that was added, scans it and opens the screen.
    bool openOn(Screen screen, const QString &view)
    {
        writeHomeDatabase(m_records);
        openAndScan();
        app().setSelection(screen);
        return waitForView(view) && waitForPicture();
    }
    /// Waits until the window has drawn what is new.
    bool waitForPicture() const
    {
        QSignalSpy drawn(window(), &QQuickWindow::frameSwapped);
        window()->update();
        return drawn.wait(5000);
    }

    /// The screen itself, without what stands around it.
    QQuickItem *view() { return viewBelow(content()); }

    /// Whether the view of a screen comes up and shows nothing, as it does without a library.
    bool isEmptyView(Screen screen, QObject *screenPresenter) const
    {
        QQmlComponent component(qmlEngine(window()), sourceOf({ViewKey::Kind::Screen, screen}));
        const std::unique_ptr<QObject> made(component.createWithInitialProperties(
            {{QStringLiteral("presenter"), QVariant::fromValue(screenPresenter)}}));
        const auto *view = qobject_cast<QQuickItem *>(made.get());
        if (!view)
            return false;
        const QList<QQuickItem *> parts = view->childItems();
        return !parts.isEmpty() &&
               std::none_of(parts.begin(), parts.end(),
                            [](const QQuickItem *part) { return part->isVisible(); });
    }

    /// The texts from a heading on.
    QStringList textsFrom(const QString &first) const
    {
        const QStringList all = texts();
        const auto start = all.lastIndexOf(first);
        return start < 0 ? QStringList() : all.sliced(start);
    }
    bool shows(const QString &words) const { return texts().contains(words); }

private:
    QQuickItem *viewBelow(QQuickItem *item)
    {
        if (item->property("presenter").value<QObject *>() == presenter().viewPresenter())
            return item;
        for (QQuickItem *child : item->childItems()) {
            if (QQuickItem *found = viewBelow(child))
                return found;
        }
        return nullptr;
    }

    void addRecord(const QString &path, const QByteArrayList &moreFields)
    {
        m_records.append(trackRecord(QByteArrayList{textRecord("pfil", path)} + moreFields));
    }

    QByteArrayList m_records;
};

} // namespace tarnwick::testing

Q_DECLARE_METATYPE(tarnwick::testing::Way)
