// A gain written into an audio file of 10 MB: the tag is rebuilt and the whole file replaced.

#include "floors/plain_writing.h"
#include "ratio.h"
#include "tags/geob_files.h"

#include <QFile>
#include <QTemporaryDir>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype audioBytes = 10'000'000;

/// An empty tag, then the audio.
void writeAudioFile(const QString &path)
{
    QFile file(path);
    const QByteArray tag("ID3\x03\0\0\0\0\0\0", 10);
    if (!file.open(QIODevice::WriteOnly) || file.write(tag + QByteArray(audioBytes, 'a')) < 0)
        qFatal("the audio file can't be written");
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.mp3"_s);
    writeAudioFile(path);
    bench::Ratios ratios(argc, argv);
    ratios.compare(
        "audio rewrite, 10 MB", [&] { bench::rewriteWhole(path.toStdString()); },
        [&] {
            if (!SeratoGEOB::writeReplayGain(-3.2, path))
                qFatal("the gain can't be written");
        },
        2.2);
    return ratios.finish();
}
