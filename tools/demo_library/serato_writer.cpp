#include "serato_writer.h"

#include "byte_writing.h"
#include "serato_records.h"

namespace tarnwick::demo {

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 labelColours[] = {0x00999999, 0x00FFFFFF, 0x00CC4444, 0x0044CC44, 0x004488CC};

QString fileType(AudioKind audio)
{
    return audio == AudioKind::Wav ? u"wav"_s : audio == AudioKind::Aiff ? u"aif"_s : u"mp3"_s;
}

/// A field of text; Serato leaves out what is empty.
void addText(QByteArray &out, const char *tag, const QString &text)
{
    if (!text.isEmpty()) {
        appendTextRecord(out, tag, text);
    }
}

QString sizeText(quint64 bytes)
{
    const bool large = bytes >= 1'000'000;
    return QString::number(static_cast<double>(bytes) / (large ? 1e6 : 1e3), 'f', 1) +
           (large ? u"MB"_s : u"KB"_s);
}

void addTexts(QByteArray &out, const TrackPlan &track)
{
    addText(out, "ttyp", fileType(track.audio));
    addText(out, "pfil", track.path);
    addText(out, "tsng", track.title);
    addText(out, "tart", track.artist);
    addText(out, "talb", track.album);
    addText(out, "tgen", track.genre);
    addText(out, "tlen", track.length);
    addText(out, "tsiz", sizeText(track.fileBytes));
    addText(out, "tbit", track.kbps == 1411 ? u"1411.2kbps"_s : u"%1.0kbps"_s.arg(track.kbps));
    addText(out, "tsmp", track.sampleRate == 48000 ? u"48.0k"_s : u"44.1k"_s);
    addText(out, "tbpm", track.bpm);
    addText(out, "tcom", track.comment);
    addText(out, "tgrp", track.grouping);
    addText(out, "tlbl", track.label);
    addText(out, "tcmp", track.composer);
    addText(out, "ttyr", track.year);
    addText(out, "tadd", QString::number(track.dateAdded));
    addText(out, "tkey", track.key);
}

void addNumbersAndFlags(QByteArray &out, const TrackPlan &track)
{
    const auto added = static_cast<quint32>(track.dateAdded);
    appendNumberRecord(out, "uadd", added);
    appendNumberRecord(out, "ulbl", labelColours[added % std::size(labelColours)]);
    appendNumberRecord(out, "utme", added + 60);
    appendNumberRecord(out, "udsc", 0);
    appendNumberRecord(out, "ufsb", static_cast<quint32>(track.fileBytes) - track.grownBy);
    if (track.playCount > 0) {
        appendNumberRecord(out, "utpc", static_cast<quint32>(track.playCount));
        appendNumberRecord(out, "uplp", added + 86'400);
    }
    appendRecord(out, "sbav", QByteArray::fromHex("0201"));
    appendFlagRecord(out, "bhrt", true);
    appendFlagRecord(out, "bmis",
                     track.fate == Fate::FlaggedMissing ||
                         (track.fate == Fate::Gone && added % 2 == 0));
    for (const char *tag : {"bply", "blop", "bitu", "bovc"}) {
        appendFlagRecord(out, tag, false);
    }
    appendFlagRecord(out, "bcrt", track.corrupt);
    for (const char *tag : {"biro", "bwlb", "bwll", "buns", "bbgl", "bkrk"}) {
        appendFlagRecord(out, tag, false);
    }
}

void addColumn(QByteArray &out, QStringView name)
{
    QByteArray column;
    appendTextRecord(column, "tvcn", name);
    appendTextRecord(column, "tvcw", u"0");
    appendRecord(out, "ovct", column);
}

void addSorting(QByteArray &out)
{
    QByteArray sorting;
    appendTextRecord(sorting, "tvcn", u"bpm");
    appendFlagRecord(sorting, "brev", false);
    appendRecord(out, "osrt", sorting);
    for (const QStringView column : {u"song", u"artist", u"bpm", u"key"}) {
        addColumn(out, column);
    }
}

void addEntries(QByteArray &out, const QStringList &paths)
{
    for (const QString &path : paths) {
        QByteArray entry;
        appendTextRecord(entry, "ptrk", path);
        appendRecord(out, "otrk", entry);
    }
}

QByteArray number(quint32 value)
{
    QByteArray out;
    appendBigEndian(out, value);
    return out;
}

// Fields of a history entry, by Serato's numbers.
enum HistoryField : quint32 {
    Row = 1,
    Path = 2,
    FileName = 4,
    Title = 6,
    Artist = 7,
    GenreText = 9,
    Tempo = 15,
    StartTime = 28,
    EndTime = 29,
    Deck = 31,
    PlayTime = 45,
    SessionNumber = 48,
    Played = 50,
    Key = 51,
};

QByteArray historyEntry(const PlayPlan &play, quint32 row, int session)
{
    QByteArray out;
    const auto addPlayText = [&out](HistoryField field, const QString &text) {
        if (!text.isEmpty()) {
            appendNumberedField(out, field, utf16BigEndian(text));
        }
    };
    appendNumberedField(out, Row, number(row));
    addPlayText(Path, play.path);
    addPlayText(FileName, play.path.section(u'/', -1));
    addPlayText(Title, play.title);
    addPlayText(Artist, play.artist);
    addPlayText(GenreText, play.genre);
    addPlayText(Tempo, play.bpm);
    appendNumberedField(out, StartTime, number(static_cast<quint32>(play.startedAt)));
    appendNumberedField(out, EndTime, number(static_cast<quint32>(play.startedAt + play.seconds)));
    appendNumberedField(out, Deck, number(static_cast<quint32>(play.deck)));
    appendNumberedField(out, PlayTime, number(static_cast<quint32>(play.seconds)));
    appendNumberedField(out, SessionNumber, number(static_cast<quint32>(session)));
    appendNumberedField(out, Played, QByteArray(1, '\1'));
    addPlayText(Key, play.key);
    return out;
}

} // namespace

QByteArray databaseFile(const QList<TrackPlan> &tracks)
{
    QByteArray out;
    appendTextRecord(out, "vrsn", u"2.0/Serato Scratch LIVE Database");
    for (const TrackPlan &track : tracks) {
        QByteArray fields;
        addTexts(fields, track);
        addNumbersAndFlags(fields, track);
        appendRecord(out, "otrk", fields);
    }
    if (!tracks.isEmpty()) {
        appendRecord(out, "oxtr", QByteArray::fromHex("00FF80017F"));
    }
    return out;
}

QByteArray crateFile(const CratePlan &crate)
{
    QByteArray out;
    appendTextRecord(out, "vrsn", u"1.0/Serato ScratchLive Crate");
    addSorting(out);
    addEntries(out, crate.paths);
    return out;
}

QByteArray smartCrateFile(QStringView genre, const QStringList &paths)
{
    QByteArray rule;
    appendNumberRecord(rule, "urkt", 7);
    appendTextRecord(rule, "trpt", genre);
    appendTextRecord(rule, "trft", u"cond_con_str");
    QByteArray out;
    appendTextRecord(out, "vrsn", u"1.0/Serato ScratchLive Smart Crate");
    appendFlagRecord(out, "rart", true);
    appendFlagRecord(out, "rlut", true);
    appendRecord(out, "rurt", rule);
    addSorting(out);
    addEntries(out, paths);
    return out;
}

QByteArray crateOrderFile(const QList<CratePlan> &crates)
{
    QString text = u"[begin record]\n"_s;
    for (const CratePlan &crate : crates) {
        text += u"[crate]"_s + crate.name + u'\n';
    }
    return utf16BigEndian(text + u"[end record]\n"_s);
}

QByteArray sessionFile(const SessionPlan &session)
{
    QByteArray out;
    appendTextRecord(out, "vrsn", u"1.0/Serato Scratch LIVE Review");
    quint32 row = static_cast<quint32>(session.number) * 100;
    for (const PlayPlan &play : session.plays) {
        QByteArray entry;
        appendRecord(entry, "adat", historyEntry(play, ++row, session.number));
        appendRecord(out, "oent", entry);
    }
    return out;
}

} // namespace tarnwick::demo
