// The history of a busy DJ: 500 sessions of 100 plays each, and what Signal makes of it.

#include "ratio.h"
#include "serato/serato_history.h"
#include "signal/lanes.h"
#include "signal/signal_wire.h"
#include "support/generated_library.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace tarnwick;
using namespace Qt::StringLiterals;
using benchmark::DoNotOptimize;

namespace {

constexpr int sessionCount = 500;
constexpr int playsPerSession = 100;

QByteArray bigEndian(quint32 number)
{
    const char bytes[] = {char(number >> 24), char(number >> 16), char(number >> 8), char(number)};
    return QByteArray(bytes, sizeof bytes);
}

QByteArray numbered(quint32 number, const QByteArray &payload)
{
    return bigEndian(number) + bigEndian(quint32(payload.size())) + payload;
}

QByteArray utf16(const QString &text)
{
    QByteArray bytes;
    for (const QChar unit : text)
        bytes.append(char(unit.unicode() >> 8)).append(char(unit.unicode() & 0xFF));
    return bytes;
}

QByteArray record(const char *tag, const QByteArray &payload)
{
    return tag + bigEndian(quint32(payload.size())) + payload;
}

/// A play with the fields that are read and as many bytes again of others.
QByteArray play(const SeratoTrack &track, quint32 time)
{
    const QByteArray others = numbered(1, bigEndian(time)) + numbered(9, utf16(track.genre)) +
                              numbered(15, QByteArray(300, '\0'));
    const QByteArray fields = others + numbered(2, utf16(track.absolutePath())) +
                              numbered(6, utf16(track.title)) + numbered(7, utf16(track.artist)) +
                              numbered(28, bigEndian(time));
    return record("oent", record("adat", fields));
}

QString fileName(int session)
{
    return u"%1.session"_s.arg(session);
}

/// Writes the sessions; each week has a few of them.
void writeHistory(const QString &folder, const ScanResult &library)
{
    QDir().mkpath(folder);
    for (int session = 0; session < sessionCount; ++session) {
        QByteArray bytes;
        const quint32 evening = 1'500'000'000 + quint32(session) * 3 * 86'400;
        for (int i = 0; i < playsPerSession; ++i) {
            const size_t index = size_t(session * 7919 + i * 31) % library.tracks.size();
            bytes += play(library.tracks[index].track, evening + quint32(i) * 180);
        }
        QFile file(folder + u'/' + fileName(session));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("can't write the history");
    }
}

/// Reads every file and hashes as many texts as there are plays: no history comes cheaper.
void readAndHash(const QString &folder)
{
    for (int session = 0; session < sessionCount; ++session) {
        QFile file(folder + u'/' + fileName(session));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("can't read the history");
        const QByteArray bytes = file.readAll();
        for (int i = 0; i < playsPerSession; ++i)
            DoNotOptimize(QCryptographicHash::hash(QByteArrayView(bytes).sliced(i * 8, 40),
                                                   QCryptographicHash::Sha256));
    }
}

void hashTexts(size_t count)
{
    QByteArray text(40, 'x');
    for (size_t i = 0; i < count; ++i) {
        text[0] = char(i);
        DoNotOptimize(QCryptographicHash::hash(text, QCryptographicHash::Sha256));
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    const auto library = bench::generatedLibrary(100'000);
    const QString folder = SeratoHistory::sessionsDir();
    writeHistory(folder, *library);
    const auto noLane = [](const QString &) { return QString(); };
    const std::vector<PlayEvent> events = SeratoHistory::events(noLane);
    if (events.size() != size_t(sessionCount * playsPerSession))
        qFatal("the history is not whole");

    bench::Ratios ratios(argc, argv);
    ratios.compare(
        "50,000 plays of 500 sessions", [&] { readAndHash(folder); },
        [&] { DoNotOptimize(SeratoHistory::events(noLane).size()); }, 5);
    ratios.compare(
        "their keys and body as sent", [&] { hashTexts(events.size()); },
        [&] { DoNotOptimize(SignalWire::eventsBody({}, events).size()); }, 4.5);
    ratios.compare(
        "keys owned of 100,000 tracks", [&] { hashTexts(library->tracks.size()); },
        [&] { DoNotOptimize(ownedKeysOf(library->tracks).size()); }, 6);
    ratios.compare(
        "lanes of 100,000 tracks", [&] { hashTexts(library->tracks.size()); },
        [&] { DoNotOptimize(laneMapOf(library->tracks).size()); }, 3);
    return ratios.finish();
}
