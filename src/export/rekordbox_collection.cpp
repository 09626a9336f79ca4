#include "export/rekordbox_collection.h"

#include "export/export_util.h"
#include "foundation/numbers.h"

namespace tarnwick {

void RekordboxCollection::begin(int trackCount)
{
    m_out.add("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<DJ_PLAYLISTS Version=\"1.0.0\">\n"
              "  <PRODUCT Name=\"Tarnwick\" Version=\"0.1\" Company=\"Tarnwick\"/>\n");
    addNumber("  <COLLECTION Entries=\"", trackCount);
    m_out.add(">\n");
}

void RekordboxCollection::addTrack(const SeratoTrack &track, int number)
{
    readTempo(track.bpm);
    addNumber("    <TRACK TrackID=\"", number);
    addText(" Name=\"", track.displayTitle());
    addText(" Artist=\"", track.displayArtist());
    addTextIfAny(" Album=\"", track.album);
    addTextIfAny(" Genre=\"", track.genre);
    addKind(track.fileType);
    addNumberIfAny(" TotalTime=\"", ExportUtil::seconds(track.lengthText));
    addTempoIfAny(" AverageBpm=\"");
    addTextIfAny(" Tonality=\"", track.key);
    addNumberIfAny(" BitRate=\"", track.bitrateKbps());
    m_out.add(" Location=\"");
    ExportUtil::addFileUrl(m_out, track.absolutePath());
    m_out.add('"');
    endTrack();
}

/// A track has its tempo twice, so that it is put into digits once.
void RekordboxCollection::readTempo(const QString &bpm)
{
    const double tempo = parseTempo(bpm).value_or(0.0);
    m_tempo = tempo > 0 ? twoDecimals(tempo) : QByteArray();
}

/// A library has few file types, and their tracks stand together.
void RekordboxCollection::addKind(const QString &fileType)
{
    if (m_kind.view().isEmpty() || fileType != m_fileType) {
        m_fileType = fileType;
        m_kind.clear();
        m_kind.add(" Kind=\"");
        m_kind.addText(fileType.toUpper());
        m_kind.add(" File\"");
    }
    m_out.add(m_kind.view());
}

void RekordboxCollection::endTrack()
{
    if (m_tempo.isEmpty()) {
        m_out.add("/>\n");
        return;
    }
    m_out.add(">\n");
    addTempoIfAny("      <TEMPO Inizio=\"0.000\" Bpm=\"");
    m_out.add(" Metro=\"4/4\" Battito=\"1\"/>\n"
              "    </TRACK>\n");
}

void RekordboxCollection::beginPlaylists(int playlistCount)
{
    m_out.add("  </COLLECTION>\n"
              "  <PLAYLISTS>\n");
    addNumber("    <NODE Type=\"0\" Name=\"ROOT\" Count=\"", playlistCount);
    m_out.add(">\n");
}

void RekordboxCollection::addPlaylist(const QString &name, const std::vector<int> &trackNumbers)
{
    addText("      <NODE Name=\"", name);
    addNumber(" Type=\"1\" KeyType=\"0\" Entries=\"", qint64(trackNumbers.size()));
    m_out.add(">\n");
    for (const int number : trackNumbers) {
        addNumber("        <TRACK Key=\"", number);
        m_out.add("/>\n");
    }
    m_out.add("      </NODE>\n");
}

void RekordboxCollection::end()
{
    m_out.add("    </NODE>\n"
              "  </PLAYLISTS>\n"
              "</DJ_PLAYLISTS>\n");
}

// Each of these writes an attribute: what stands ahead of its value, the value, and a quote.

void RekordboxCollection::addText(QByteArrayView start, QStringView text)
{
    m_out.add(start);
    m_out.addXml(text);
    m_out.add('"');
}

void RekordboxCollection::addTextIfAny(QByteArrayView start, QStringView text)
{
    if (!text.isEmpty())
        addText(start, text);
}

void RekordboxCollection::addNumber(QByteArrayView start, qint64 number)
{
    m_out.add(start);
    m_out.addNumber(number);
    m_out.add('"');
}

void RekordboxCollection::addNumberIfAny(QByteArrayView start, qint64 number)
{
    if (number >= 1)
        addNumber(start, number);
}

void RekordboxCollection::addTempoIfAny(QByteArrayView start)
{
    if (m_tempo.isEmpty())
        return;
    m_out.add(start);
    m_out.add(m_tempo);
    m_out.add('"');
}

} // namespace tarnwick
