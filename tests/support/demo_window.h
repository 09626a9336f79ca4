#pragma once

#include "support/screen_fixture.h"

#include <QProcess>

namespace tarnwick::testing {

/// The window over a library that has something to say on every screen.
class DemoWindow : public ScreenFixture
{
public:
    DemoWindow()
    {
        const QString options = QStringLiteral("--tracks 120 --seed 11 --out");
        QProcess maker;
        maker.setStandardOutputFile(QProcess::nullDevice());
        maker.start(QStringLiteral(DEMO_LIBRARY), options.split(u' ') << home({}));
        if (!maker.waitForFinished() || maker.exitCode() != 0)
            qFatal("the library can't be made");
    }

    /// Opens a screen and waits for its picture.
    bool show(Screen screen)
    {
        app().setSelection(screen);
        return waitUntilIdle() && waitForPicture();
    }
};

} // namespace tarnwick::testing
