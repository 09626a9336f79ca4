#include "support/library_on_disk.h"

#include "support/generated_library.h"

#include <QDir>
#include <QFile>
#include <QtEndian>

#include <random>

using namespace Qt::StringLiterals;

namespace tarnwick::bench {

namespace {

void appendRecord(QByteArray &out, const char *tag, QByteArrayView payload)
{
    const quint32 length = qToBigEndian(quint32(payload.size()));
    out.append(tag, 4);
    out.append(reinterpret_cast<const char *>(&length), 4);
    out.append(payload.data(), payload.size());
}

void appendText(QByteArray &out, const char *tag, QStringView text)
{
    QByteArray units(text.size() * 2, Qt::Uninitialized);
    qToBigEndian<char16_t>(text.utf16(), text.size(), units.data());
    appendRecord(out, tag, units);
}

QByteArray trackFields(const SeratoTrack &track, const QString &path)
{
    QByteArray fields;
    appendText(fields, "ttyp", u"mp3");
    appendText(fields, "pfil", path);
    appendText(fields, "tsng", track.title);
    appendText(fields, "tart", track.artist);
    appendText(fields, "talb", track.album);
    appendText(fields, "tgen", track.genre);
    appendText(fields, "tlen", track.lengthText);
    appendText(fields, "tsiz", u"7.4MB");
    appendText(fields, "tbit", track.bitrateText);
    appendText(fields, "tsmp", u"44.1k");
    appendText(fields, "tbpm", track.bpm);
    appendText(fields, "tkey", track.key);
    appendText(fields, "tadd", u"1594684800");
    appendRecord(fields, "uadd", QByteArray(4, '\x5f'));
    appendRecord(fields, "utpc", QByteArray(4, '\0'));
    for (const char *flag : {"bhrt", "bmis", "bply", "blop", "bitu", "bovc", "bcrt", "biro"})
        appendRecord(fields, flag, QByteArray(1, '\0'));
    return fields;
}

void appendFrame(QByteArray &out, const char *descriptor, const QByteArray &data)
{
    QByteArray payload("\0application/octet-stream\0\0", 27);
    payload += descriptor;
    payload += '\0';
    payload += data;
    const quint32 length = qToBigEndian(quint32(payload.size()));
    out.append("GEOB");
    out.append(reinterpret_cast<const char *>(&length), 4);
    out.append(2, '\0');
    out += payload;
}

/// Bytes that stand for a picture: no two alike, so that a search meets no easy run.
QByteArray noise(int count)
{
    std::mt19937 random(4711);
    QByteArray bytes(count, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = char(random());
    return bytes;
}

QByteArray taggedFile(int tagBytes)
{
    QByteArray frames;
    appendFrame(frames, "Serato Autotags",
                QByteArray("\x01\x01"
                           "124.00\0-3.257\0"
                           "0.000\0",
                           21));
    appendFrame(frames, "Serato BeatGrid", QByteArray(20, '\x01'));
    appendFrame(frames, "Serato Markers2", QByteArray(400, 'A'));
    const int rest = std::max(0, tagBytes - int(frames.size()));
    frames = noise(rest) + frames;
    QByteArray file("ID3\x03\0\0", 6);
    for (int shift = 21; shift >= 0; shift -= 7)
        file += char((frames.size() >> shift) & 0x7F);
    return file + frames + QByteArray(512, '\x55');
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("can't write %s", qUtf8Printable(path));
}

} // namespace

QByteArray databaseImage(int tracks, const QString &folder)
{
    const auto library = generatedLibrary(tracks);
    QByteArray image;
    appendText(image, "vrsn", u"2.0/Serato Scratch LIVE Database");
    for (int i = 0; i < tracks; ++i) {
        const QString path = u"%1/%2.mp3"_s.arg(folder).arg(i);
        appendRecord(image, "otrk", trackFields(library->tracks[size_t(i)].track, path));
    }
    return image;
}

std::vector<std::string> writeTaggedFiles(const QString &folder, int count, int tagBytes)
{
    const QByteArray content = taggedFile(tagBytes);
    std::vector<std::string> paths;
    for (int i = 0; i < count; ++i) {
        const QString path = u"%1/%2.mp3"_s.arg(folder).arg(i);
        writeFile(path, content);
        paths.push_back(path.toStdString());
    }
    return paths;
}

QString templateInMemory()
{
    const QString memory = u"/dev/shm"_s;
    return (QDir(memory).exists() ? memory : QDir::tempPath()) + u"/tarnwick-bench-XXXXXX"_s;
}

LibraryOnDisk::LibraryOnDisk(int tracks, int tagBytes)
{
    QDir(m_folder.path()).mkdir(u"_Serato_"_s);
    const QString music = m_folder.filePath(u"music"_s);
    QDir().mkdir(music);
    m_files = writeTaggedFiles(music, tracks, tagBytes);
    writeFile(database(), databaseImage(tracks, music.sliced(1)));
}

} // namespace tarnwick::bench
