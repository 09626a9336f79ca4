#include "path_plan.h"

#include "music_names.h"

#include <QSet>

namespace tarnwick::demo {

using namespace Qt::StringLiterals;

namespace {

/// A text as part of a file name: without the characters that some system refuses.
QString fileNamePart(const QString &text)
{
    QString part = text.trimmed();
    for (QChar &unit : part) {
        if (uR"(/\:*?"<>|)"_s.contains(unit)) {
            unit = u'_';
        }
    }
    while (part.startsWith(u'.')) {
        part.remove(0, 1);
    }
    return part.isEmpty() ? u"Unknown"_s : part;
}

QString extension(AudioKind audio, Random &random)
{
    switch (audio) {
    case AudioKind::Wav:
        return u".wav"_s;
    case AudioKind::Aiff:
        return random.permille(400) ? u".aif"_s : u".aiff"_s;
    case AudioKind::Mp3:
        break;
    }
    return random.permille(20) ? u".MP3"_s : u".mp3"_s;
}

QString folder(const TrackPlan &track, Random &random)
{
    QString artist = u"Music/Library/"_s + fileNamePart(track.artist);
    const int draw = random.below(100);
    if (draw < 45) {
        return artist;
    }
    if (draw < 62) {
        return artist + u'/' + fileNamePart(track.album);
    }
    if (draw < 80) {
        const QString month = twoDigits(random.between(1, 12));
        return u"Music/Promos/20%1-%2"_s.arg(random.between(18, 24)).arg(month);
    }
    return draw < 92 ? u"Downloads"_s : u"Desktop/New tunes"_s;
}

QString baseName(const TrackPlan &track, Random &random)
{
    const QString title = fileNamePart(track.title);
    const int draw = random.below(100);
    if (track.title.isEmpty()) {
        return u"Track %1"_s.arg(random.between(1, 99));
    }
    if (draw < 25) {
        return twoDigits(random.between(1, 18)) + u' ' + title;
    }
    return track.artist.isEmpty() || draw < 32 ? title
                                               : fileNamePart(track.artist) + u" - "_s + title;
}

class Places
{
public:
    explicit Places(const QString &home)
        : m_root(withoutLeadingSlash(home) + u'/')
    {}

    /// The first free one of "name.mp3", "name (2).mp3" and so on; taken from now on.
    QString take(const QString &inFolder, const QString &base, const QString &ending)
    {
        QString path = m_root + inFolder + u'/' + base + ending;
        for (int number = 2; m_taken.contains(path.toLower()); ++number) {
            path = m_root + inFolder + u'/' + base + u" (%1)"_s.arg(number) + ending;
        }
        m_taken.insert(path.toLower());
        return path;
    }

    /// The file's name in a new folder, in a further subfolder where the name is taken.
    QString move(const QString &path, QString toFolder)
    {
        const QString name = path.sliced(path.lastIndexOf(u'/') + 1);
        while (m_taken.contains((m_root + toFolder + u'/' + name).toLower())) {
            toFolder += u"/More"_s;
        }
        return take(toFolder, name, {});
    }

private:
    QString m_root;
    QSet<QString> m_taken;
};

QString newFolder(Random &random)
{
    static constexpr QStringView folders[] = {u"Music/Archive/2023", u"Music/Archive/2024",
                                              u"Documents/Old laptop/Music", u"Desktop/USB backup",
                                              u"Music/Sorted/Keepers"};
    return random.pick(folders).toString();
}

} // namespace

QString withoutLeadingSlash(const QString &path)
{
    return path.startsWith(u'/') ? path.sliced(1) : path;
}

void planPaths(QList<TrackPlan> &tracks, const QString &home, Random random)
{
    Places places(home);
    for (TrackPlan &track : tracks) {
        const QString inFolder = folder(track, random);
        const QString base = baseName(track, random);
        track.path = places.take(inFolder, base, extension(track.audio, random));
    }
    for (TrackPlan &track : tracks) {
        if (track.fate == Fate::Moved) {
            track.movedTo = places.move(track.path, newFolder(random));
        }
    }
}

} // namespace tarnwick::demo
