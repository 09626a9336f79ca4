#pragma once

#include "export/utf8_text.h"
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
    QByteArrayView text() const { return m_out.view(); }

    void begin(int trackCount);
    /// `number` is what playlists call the track by.
    void addTrack(const SeratoTrack &track, int number);
    void beginPlaylists(int playlistCount);
    void addPlaylist(const QString &name, const std::vector<int> &trackNumbers);
    void end();

private:
    void readTempo(const QString &bpm);
    void addKind(const QString &fileType);
    void addText(QByteArrayView start, QStringView text);
    void addTextIfAny(QByteArrayView start, QStringView text);
    void addNumber(QByteArrayView start, qint64 number);
    void addNumberIfAny(QByteArrayView start, qint64 number);
    void addTempoIfAny(QByteArrayView start);
    void endTrack();

    Utf8Text m_out;
    QByteArray m_tempo; ///< of the latest track, in digits; empty for none
    QString m_fileType; ///< of the latest track
    Utf8Text m_kind;    ///< what is written for it
};

} // namespace tarnwick
