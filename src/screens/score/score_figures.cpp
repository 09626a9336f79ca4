#include "screens/score/score_figures.h"

using namespace Qt::StringLiterals;

namespace tarnwick::ScoreFigures {

namespace {

constexpr int goodFrom = 80;
constexpr int warnFrom = 55;

} // namespace

Band bandOf(int score)
{
    return score >= goodFrom ? Band::Good : score >= warnFrom ? Band::Warn : Band::Poor;
}

Screen screenFor(Dimension::Kind kind)
{
    switch (kind) {
    case Dimension::Kind::FilesLinks:
        return Screen::Missing;
    case Dimension::Kind::CuesGrids:
        return Screen::Cues;
    case Dimension::Kind::Duplicates:
        return Screen::Duplicates;
    case Dimension::Kind::TagsGenres:
        return Screen::TrackId;
    case Dimension::Kind::Levels:
        return Screen::Loudness;
    case Dimension::Kind::ExportParity:
        return Screen::Export;
    }
    Q_UNREACHABLE();
}

QString sourceLine(const QString &volumeName, int total)
{
    return u"%1 · %2 tracks · scanned just now"_s.arg(volumeName, QString::number(total));
}

} // namespace tarnwick::ScoreFigures
