#pragma once

#include "support/screen_fixture.h"
#include "support/signal_fixture.h"
#include "support/signal_server.h"

namespace tarnwick::testing {

/// A DJ who looks at the screen of Signal, on that Friday.
class SignalScreenFixture : public ScreenFixture
{
public:
    /// A track on disk, as `titlesOf` a community's chart would call it.
    QString addOwned(const QString &title, const QString &genre)
    {
        return addTrack(
            title + u".mp3"_s,
            {textRecord("tsng", title), textRecord("tart", u"Artist"), textRecord("tgen", genre)});
    }
    /// Writes the settings as an earlier run would have left them.
    void saveSettings(const QString &url, bool sharing = false, const QString &key = {}) const
    {
        SignalConfig config = SignalConfig::loadOrCreate();
        config.serverUrl = url;
        config.optIn = sharing;
        config.apiKey = key;
        config.save();
    }
    static SignalConfig savedSettings() { return SignalConfig::loadOrCreate(); }
    /// Lets so many other DJs play each of the titles once this week.
    static void feed(const QString &url, int djs, const QStringList &titles, const QString &lane,
                     const QString &key = {})
    {
        std::vector<PlayEvent> events;
        for (const QString &title : titles)
            events.push_back({.trackKey = keyOf(title),
                              .title = title,
                              .artist = u"Artist"_s,
                              .lane = lane,
                              .week = u"2026-11-16"_s,
                              .playedPath = {}});
        for (int dj = 0; dj < djs; ++dj) {
            const SignalConfig config = {
                .serverUrl = url, .djHash = u"DJ-%1"_s.arg(dj), .apiKey = key};
            if (!whileServing([&] { return SignalClient::contribute(config, events); }))
                qFatal("the Signal server doesn't take plays");
        }
    }

    bool open() { return openOn(Screen::Signal, u"SignalScreen"_s); }
    /// Opens the screen and waits for the chart.
    bool openAndFetch() { return open() && waitUntilIdle() && waitForPicture(); }
    /// What stands below the title and the line about it.
    QStringList below() const
    {
        return textsFrom(u"New music ranked by how many DJs are actually playing it — never by "
                         "sales. 5-DJ minimum before anything shows."_s)
            .sliced(1);
    }
    QQuickItem *item(const QString &name, QAccessible::Role role) const
    {
        return itemNamed(content(), name, role);
    }
    QQuickItem *field(const QString &label) const
    {
        for (QQuickItem *item : accessibleItems(content())) {
            if (accessibleRole(item) == QAccessible::EditableText &&
                item->property("label").toString() == label)
                return item;
        }
        return nullptr;
    }
    QQuickItem *shareSwitch() const { return item(u"Share your plays"_s, QAccessible::CheckBox); }
    /// Clicks into a field, takes out what is in it, and types.
    bool type(const QString &label, const QString &text)
    {
        QQuickItem *target = field(label);
        if (!target || !pressByPointer(target) || !target->hasActiveFocus())
            return false;
        QTest::keyClick(window(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(window(), Qt::Key_Delete);
        for (const QChar letter : text)
            QTest::sendKeyEvent(QTest::Click, window(), Qt::Key_unknown, QString(letter),
                                Qt::NoModifier);
        return true;
    }
    /// Opens the settings and waits until they stand still.
    bool openSetup(const QString &host = u"127.0.0.1"_s)
    {
        QQuickItem *chip = button(host);
        return chip && pressByPointer(chip) && waitForSetup();
    }
    bool waitForSetup()
    {
        return QTest::qWaitFor([this] { return isSetupOpen(); }) && waitForPicture();
    }
    bool isSetupOpen() const { return field(u"Access key"_s); }

private:
    platform::ScopedClock m_clock{friday};
};

} // namespace tarnwick::testing
