#pragma once

#include "serato/serato_track.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace tarnwick {

/// The text of a rekordbox collection, written straight into one buffer, in UTF-8. To be called in
/// the order of the document: begin, the tracks, beginPlaylists, the playlists, end. What is
/// written is fixed to the byte, indents included.
class RekordboxCollection
{
public:
    QByteArrayView text() const { return m_out; }

    void begin(int trackCount);
    /// `number` is what playlists call the track by.
    void addTrack(const SeratoTrack &track, int number);
    void beginPlaylists(int playlistCount);
    void addPlaylist(const QString &name, const std::vector<int> &trackNumbers);
    void end();

private:
    void addText(QByteArrayView start, QStringView text);
    void addTextIfAny(QByteArrayView start, QStringView text);
    void addNumber(QByteArrayView start, qint64 number);
    void addNumberIfAny(QByteArrayView start, qint64 number);
    void addTempo(QByteArrayView start, double tempo);
    void endTrack(double tempo);

    QByteArray m_out;
};

} // namespace tarnwick
