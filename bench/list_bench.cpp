// Lists of 100,000 rows: how long a picture takes while they are gone through page by page, and at
// a leap to their end. A picture that takes longer than the screen's interval is one that drops.

#include "safety/change_log.h"
#include "safety/cue_entry.h"
#include "safety/store.h"
#include "safety/store_file.h"
#include "support/library_on_disk.h"
#include "tarnwick/main_window.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QtEndian>

#include <algorithm>
#include <cstdio>
#include <functional>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

constexpr int rowCount = 100'000;
constexpr int pages = 60;
constexpr double interval = 16.7; // milliseconds between two pictures of a screen

void write(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s can't be written", qUtf8Printable(path));
}

void writeChangeLog()
{
    ChangeLog log;
    const ChangeEntry first = log.append({.kind = ChangeEntry::Kind::Tag,
                                          .target = u"Some Artist - Some Title (Club Mix).mp3"_s,
                                          .detail = u"Genre set to “Techno”"_s,
                                          .before = u"House"_s,
                                          .after = u"Techno"_s,
                                          .snapshotId = u"snap-20261120-140500-123"_s});
    QByteArrayList texts;
    for (int i = 0; i < rowCount; ++i) {
        ChangeEntry entry = first;
        entry.id = QUuid::createUuid().toString(QUuid::WithoutBraces);
        entry.target = u"Some Artist - Some Title %1.mp3"_s.arg(i);
        texts.append(StoreFile::encoded(entry));
    }
    write(Store::changeLog(), StoreFile::listOf(texts));
}

void writeVault(const QString &folder)
{
    const CueEntry entry({{u"Serato Markers2"_s, QByteArray(30, 'c')}},
                         QDateTime::fromSecsSinceEpoch(1'795'176'000, Qt::UTC), 1);
    QByteArray file = "{";
    for (int i = 0; i < rowCount; ++i)
        file += (i > 0 ? ",\n  \"" : "\n  \"") + folder.toUtf8() + '/' + QByteArray::number(i) +
                ".mp3\": " + entry.text().toByteArray();
    write(Store::cueVault(), file + "\n}\n");
}

void append(QByteArray &out, const char *tag, QByteArrayView payload)
{
    const quint32 length = qToBigEndian(quint32(payload.size()));
    out.append(tag, 4);
    out.append(reinterpret_cast<const char *>(&length), 4);
    out.append(payload.data(), payload.size());
}

void append(QByteArray &out, const char *tag, const QString &text)
{
    QByteArray units(text.size() * 2, Qt::Uninitialized);
    qToBigEndian<char16_t>(text.utf16(), text.size(), units.data());
    append(out, tag, QByteArrayView(units));
}

/// Two records of each of the tracks, with which each is a copy of another that has lost its cues.
void writeLibraryOfCopies(const QTemporaryDir &folder)
{
    const QString music = folder.filePath(u"music"_s);
    write(music + u"/audio"_s, QByteArray(64, '\0'));
    QByteArray image;
    for (int i = 0; i < rowCount; ++i) {
        const QString path = u"%1/%2.mp3"_s.arg(music).arg(i);
        QFile::link(u"audio"_s, path);
        QByteArray fields;
        append(fields, "pfil", path.sliced(1));
        append(fields, "tsng", u"Some Title %1"_s.arg(i));
        append(fields, "tart", u"Some Artist"_s);
        append(image, "otrk", QByteArrayView(fields));
        append(image, "otrk", QByteArrayView(fields));
    }
    write(folder.filePath(u"_Serato_/database V2"_s), image);
}

void writeLibraryOfMissing(const QTemporaryDir &folder)
{
    write(folder.filePath(u"_Serato_/database V2"_s),
          bench::databaseImage(rowCount, u"gone/music"_s));
}

void waitFor(const std::function<bool()> &condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
}

/// Milliseconds from a change until it is drawn.
double pictureAfter(QQuickWindow &window, const std::function<void()> &change)
{
    bool drawn = false;
    const auto connection = QObject::connect(&window, &QQuickWindow::afterRendering, &window,
                                             [&drawn] { drawn = true; });
    QElapsedTimer timer;
    timer.start();
    change();
    const QImage picture = window.grabWindow(); // draws at once, without the wait for a screen
    Q_UNUSED(picture);
    const double taken = double(timer.nsecsElapsed()) / 1e6;
    QObject::disconnect(connection);
    return taken;
}

/// The longest list below an item.
QQuickItem *listIn(QQuickItem *item)
{
    QQuickItem *longest = nullptr;
    const auto length = [](QQuickItem *list) { return list->property("count").toInt(); };
    for (QQuickItem *child : item->childItems()) {
        QQuickItem *found = child->inherits("QQuickListView") ? child : listIn(child);
        if (found && (!longest || length(found) > length(longest)))
            longest = found;
    }
    return longest;
}

/// Prints the time of a picture for a page, a line back, and the end; true if each is in time.
bool measure(const char *name, AppState &app, MainWindow &main, Screen screen)
{
    QQuickWindow &window = *main.window();
    app.setSelection(screen);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    (void)window.grabWindow();
    QQuickItem *list = listIn(window.contentItem());
    const int rows = list ? list->property("count").toInt() : 0;
    if (rows < rowCount)
        qFatal("%s has %d rows", name, rows);
    std::vector<double> times;
    for (int i = 0; i < pages; ++i)
        times.push_back(pictureAfter(window, [list] {
            list->setProperty("contentY", list->property("contentY").toReal() + list->height());
        }));
    std::sort(times.begin(), times.end());
    const auto leap = [&](const char *where) {
        return pictureAfter(window, [&] { QMetaObject::invokeMethod(list, where); });
    };
    const double end = leap("positionViewAtEnd");
    const double start = leap("positionViewAtBeginning");
    const double median = times[times.size() / 2];
    const double worst = std::max({times.back(), end, start});
    std::printf("%-16s %7d %10.1f %10.1f %10.1f %10.1f%s\n", name, rows, median, times.back(), end,
                start, worst > interval ? "  DROPPED" : "");
    std::fflush(stdout);
    return worst <= interval;
}

void scan(AppState &app, const QTemporaryDir &folder)
{
    app.startScan({u"Bench"_s, QUrl::fromLocalFile(folder.filePath(u"_Serato_"_s)), true, true});
    waitFor([&] { return app.pendingTasks() == 0; });
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    const QTemporaryDir missing(bench::templateInMemory());
    const QTemporaryDir copies(bench::templateInMemory());
    qputenv("XDG_DATA_HOME", copies.filePath(u"data"_s).toUtf8());
    writeLibraryOfMissing(missing);
    writeLibraryOfCopies(copies);
    writeChangeLog();
    writeVault(copies.filePath(u"music"_s).sliced(1));

    AppState app(AppState::Environment::Ignored);
    MainWindow main(app);
    main.window()->resize(1120, 720);
    main.show();
    std::printf("%-16s %7s %10s %10s %10s %10s   (ms, goal %.1f each)\n", "", "rows", "a page",
                "longest", "the end", "the start", interval);
    scan(app, missing);
    bool inTime = measure("fix queue", app, main, Screen::FixQueue);
    inTime &= measure("missing", app, main, Screen::Missing);
    scan(app, copies);
    inTime &= measure("duplicates", app, main, Screen::Duplicates);
    inTime &= measure("losses", app, main, Screen::Cues);
    inTime &= measure("change log", app, main, Screen::ChangeLog);
    const bool strict = application.arguments().contains(u"--strict"_s);
    std::fflush(stdout);
    main.window()->hide();
    return strict && !inTime ? 1 : 0;
}
