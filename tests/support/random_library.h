#pragma once

#include "analysis/scan_result.h"

#include <QStringList>

#include <random>

namespace tarnwick::testing {

/// Tracks drawn from few words, so that keys meet: in other letter case, with blanks, line breaks
/// and separators around them, in several scripts, on disk or not. The same seed draws the same.
class RandomLibrary
{
public:
    explicit RandomLibrary(unsigned seed)
        : m_random(seed)
    {}

    std::vector<ScannedTrack> tracks(int count)
    {
        std::vector<ScannedTrack> drawn;
        for (int i = 0; i < count; ++i)
            drawn.push_back(track(i));
        return drawn;
    }

    /// A number from 0 to below `bound`.
    int below(int bound) { return std::uniform_int_distribution(0, bound - 1)(m_random); }
    bool oneIn(int chances) { return below(chances) == 0; }
    QString oneOf(const QStringList &texts) { return texts.at(below(int(texts.size()))); }

    /// `text` in some letter case, sometimes with white space around it.
    QString varied(QString text)
    {
        if (oneIn(3))
            text = oneIn(2) ? text.toUpper() : text.toLower();
        if (oneIn(4))
            text = oneOf(spaces()) + text;
        if (oneIn(4))
            text += oneOf(spaces());
        return text;
    }

    static QStringList spaces()
    {
        using namespace Qt::StringLiterals;
        return {u" "_s,      u"\t"_s,     u"  "_s,     u"\n"_s,     u"\r\n"_s,  u"\u00A0"_s,
                u"\u0085"_s, u"\u2003"_s, u"\u2028"_s, u"\u3000"_s, u"\u200B"_s};
    }

private:
    ScannedTrack track(int index)
    {
        using namespace Qt::StringLiterals;
        static const QStringList artists = {u""_s,
                                            u" "_s,
                                            u"Adele"_s,
                                            u"Sigur Rós"_s,
                                            u"ÉTIENNE"_s,
                                            u"Σίσυφος"_s,
                                            u"İbrahim"_s,
                                            u"Ibrahim"_s,
                                            u"A|B"_s,
                                            u"A"_s,
                                            u"\U00010400x"_s,
                                            u"ǅ"_s,
                                            u"\u212Aelvin"_s,
                                            u"Kelvin"_s};
        static const QStringList titles = {u""_s,
                                           u" "_s,
                                           u"\n"_s,
                                           u"Song"_s,
                                           u"Adele - Song"_s,
                                           u" - "_s,
                                           u"Straße"_s,
                                           u"B|C"_s,
                                           u"C"_s,
                                           u"Song (Radio Edit)"_s,
                                           u"Élan"_s,
                                           u"A - B - C"_s,
                                           u"Song [Club Mix]"_s,
                                           u"Song - Extended"_s,
                                           u"Sigur Rós - Élan"_s};
        static const QStringList genres = {u""_s,       u" "_s,      u"House"_s, u"house"_s,
                                           u"House "_s, u"Techno"_s, u"Élan"_s};
        ScannedTrack drawn;
        drawn.track.artist = varied(oneOf(artists));
        drawn.track.title = varied(oneOf(titles));
        drawn.track.genre = oneOf(genres);
        drawn.track.relativePath = (oneIn(3) ? u"/"_s : QString()) + u"music/%1.mp3"_s.arg(index);
        drawn.track.bitrateText = oneOf({u"320.0kbps"_s, u"128 kbps"_s, u"VBR"_s, u""_s});
        drawn.track.key = oneOf({u""_s, u"Am"_s});
        drawn.track.bpm = oneOf({u""_s, u"0"_s, u"120.00"_s});
        drawn.track.playCount = quint64(below(3));
        drawn.track.flaggedMissing = oneIn(10);
        drawn.existsOnDisk = !oneIn(5);
        drawn.onDiskSizeBytes = quint64(below(3)) * 1000;
        drawn.hasMarkers = oneIn(2);
        drawn.hasBeatGrid = oneIn(2);
        drawn.hasGain = oneIn(2);
        drawn.tagsRead = !oneIn(4);
        if (oneIn(2))
            drawn.autogain = below(100) * 0.1 - 5.0;
        return drawn;
    }

    std::mt19937 m_random;
};

} // namespace tarnwick::testing
