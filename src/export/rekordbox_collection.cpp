#include "export/rekordbox_collection.h"

#include "export/export_util.h"
#include "foundation/numbers.h"

namespace tarnwick {

void RekordboxCollection::begin(int trackCount)
{
    m_out.append("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                 "<DJ_PLAYLISTS Version=\"1.0.0\">\n"
                 "  <PRODUCT Name=\"Tarnwick\" Version=\"0.1\" Company=\"Tarnwick\"/>\n");
    addNumber("  <COLLECTION Entries=\"", trackCount);
    m_out.append(">\n");
}

void RekordboxCollection::addTrack(const SeratoTrack &track, int number)
{
    const double tempo = parseTempo(track.bpm).value_or(0.0);
    addNumber("    <TRACK TrackID=\"", number);
    addText(" Name=\"", track.displayTitle());
    addText(" Artist=\"", track.displayArtist());
    addTextIfAny(" Album=\"", track.album);
    addTextIfAny(" Genre=\"", track.genre);
    m_out.append(" Kind=\"").append(track.fileType.toUpper().toUtf8()).append(" File\"");
    addNumberIfAny(" TotalTime=\"", ExportUtil::seconds(track.lengthText));
    if (tempo > 0)
        addTempo(" AverageBpm=\"", tempo);
    addTextIfAny(" Tonality=\"", track.key);
    addNumberIfAny(" BitRate=\"", track.bitrateKbps());
    m_out.append(" Location=\"");
    ExportUtil::appendFileUrl(m_out, track.absolutePath());
    m_out.append('"');
    endTrack(tempo);
}

void RekordboxCollection::endTrack(double tempo)
{
    if (!(tempo > 0)) {
        m_out.append("/>\n");
        return;
    }
    m_out.append(">\n");
    addTempo("      <TEMPO Inizio=\"0.000\" Bpm=\"", tempo);
    m_out.append(" Metro=\"4/4\" Battito=\"1\"/>\n"
                 "    </TRACK>\n");
}

void RekordboxCollection::beginPlaylists(int playlistCount)
{
    m_out.append("  </COLLECTION>\n"
                 "  <PLAYLISTS>\n");
    addNumber("    <NODE Type=\"0\" Name=\"ROOT\" Count=\"", playlistCount);
    m_out.append(">\n");
}

void RekordboxCollection::addPlaylist(const QString &name, const std::vector<int> &trackNumbers)
{
    addText("      <NODE Name=\"", name);
    addNumber(" Type=\"1\" KeyType=\"0\" Entries=\"", qint64(trackNumbers.size()));
    m_out.append(">\n");
    for (const int number : trackNumbers) {
        addNumber("        <TRACK Key=\"", number);
        m_out.append("/>\n");
    }
    m_out.append("      </NODE>\n");
}

void RekordboxCollection::end()
{
    m_out.append("    </NODE>\n"
                 "  </PLAYLISTS>\n"
                 "</DJ_PLAYLISTS>\n");
}

// Each of these writes an attribute: what stands ahead of its value, the value, and a quote.

void RekordboxCollection::addText(QByteArrayView start, QStringView text)
{
    m_out.append(start);
    ExportUtil::appendXml(m_out, text);
    m_out.append('"');
}

void RekordboxCollection::addTextIfAny(QByteArrayView start, QStringView text)
{
    if (!text.isEmpty())
        addText(start, text);
}

void RekordboxCollection::addNumber(QByteArrayView start, qint64 number)
{
    m_out.append(start);
    ExportUtil::appendNumber(m_out, number);
    m_out.append('"');
}

void RekordboxCollection::addNumberIfAny(QByteArrayView start, qint64 number)
{
    if (number >= 1)
        addNumber(start, number);
}

void RekordboxCollection::addTempo(QByteArrayView start, double tempo)
{
    m_out.append(start);
    ExportUtil::appendTwoDecimals(m_out, tempo);
    m_out.append('"');
}

} // namespace tarnwick
