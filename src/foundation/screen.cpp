#include "foundation/screen.h"

#include "foundation/identity.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

const QList<ScreenInfo> &allScreens()
{
    static const QString later = u"Later phase"_s;
    static const QString repair = u"Repair — Phase 3"_s;
    static const QString prep = u"Prep — Phase 4"_s;
    static const QString play = u"Play / backend — Phase 6"_s;
    static const QList<ScreenInfo> screens = {
        {Screen::LibraryScore, u"libraryScore"_s, u"Library score"_s, u"gauge.medium"_s, later,
         true},
        {Screen::Health, u"health"_s, u"Health"_s, u"heart.text.square"_s, later, true},
        {Screen::LibrarySafety, u"librarySafety"_s, u"Library & safety"_s, u"lock.shield"_s, later,
         true},
        {Screen::FixQueue, u"fixQueue"_s, u"Fix queue"_s, u"checklist"_s, repair, true},
        {Screen::Duplicates, u"duplicates"_s, u"Duplicates"_s, u"square.on.square"_s, repair, true},
        {Screen::Missing, u"missing"_s, u"Missing files"_s, u"questionmark.folder"_s, repair, true},
        {Screen::Cues, u"cues"_s, u"Cues & grids"_s, u"waveform.path.ecg"_s, repair, true},
        {Screen::Versions, u"versions"_s, u"Versions"_s, u"square.stack.3d.up"_s, repair, true},
        {Screen::TrackId, u"trackID"_s, u"Track ID"_s, u"tag"_s, repair, true},
        {Screen::GigCheck, u"gigCheck"_s, u"Gig check"_s, u"checkmark.seal"_s, prep, true},
        {Screen::GigRun, u"gigRun"_s, u"Gig run"_s, u"bolt.fill"_s, prep, true},
        {Screen::Loudness, u"loudness"_s, u"Loudness"_s, u"speaker.wave.3"_s, prep, true},
        {Screen::Stems, u"stems"_s, u"Stems"_s, u"square.split.1x2"_s, prep, false},
        {Screen::Hygiene, u"hygiene"_s, u"Crate hygiene"_s, u"sparkles"_s, prep, true},
        {Screen::Suggestions, u"suggestions"_s, u"Suggestions"_s, u"lightbulb"_s, play, false},
        {Screen::Signal, u"signal"_s, u"What's landing"_s, u"antenna.radiowaves.left.and.right"_s,
         play, true},
        {Screen::Transitions, u"transitions"_s, u"Transitions"_s, u"arrow.left.arrow.right"_s, play,
         false},
        {Screen::Debrief, u"debrief"_s, u"Debrief"_s, u"chart.bar.doc.horizontal"_s, play, false},
        {Screen::Booth, u"booth"_s, u"Booth companion"_s, u"iphone"_s, play, false},
        {Screen::Community, u"community"_s, u"Community IDs"_s, u"person.3"_s, play, false},
        {Screen::Watch, u"watch"_s, u"Always clean"_s, u"eye"_s, u"Automate — Phase 6"_s, false},
        {Screen::ChangeLog, u"changeLog"_s, u"Change log"_s, u"clock.arrow.circlepath"_s,
         u"Safety layer — Phase 2"_s, true},
        {Screen::Export, u"export"_s, u"USB & export"_s, u"externaldrive"_s, u"Export — Phase 5"_s,
         true},
        {Screen::Account, u"account"_s, u"Account"_s, u"person.crop.circle"_s, later, false},
    };
    return screens;
}

const ScreenInfo &infoOf(Screen screen)
{
    return allScreens().at(int(screen));
}

std::optional<Screen> screenFromRawValue(QStringView rawValue)
{
    for (const ScreenInfo &info : allScreens()) {
        if (info.rawValue == rawValue)
            return info.screen;
    }
    return std::nullopt;
}

const QList<NavGroup> &Nav::groups()
{
    static const QList<NavGroup> groups = {
        {freshIdentity(),
         u"Overview"_s,
         {Screen::LibraryScore, Screen::Health, Screen::LibrarySafety, Screen::FixQueue}},
        {freshIdentity(),
         u"Repair"_s,
         {Screen::Duplicates, Screen::Missing, Screen::Cues, Screen::Versions, Screen::TrackId}},
        {freshIdentity(),
         u"Prep"_s,
         {Screen::GigCheck, Screen::GigRun, Screen::Loudness, Screen::Stems, Screen::Hygiene}},
        {freshIdentity(),
         u"Play"_s,
         {Screen::Suggestions, Screen::Signal, Screen::Transitions, Screen::Debrief, Screen::Booth,
          Screen::Community}},
        {freshIdentity(), u"Automate"_s, {Screen::Watch}},
        {freshIdentity(), u"Export"_s, {Screen::ChangeLog, Screen::Export}},
        {freshIdentity(), u"Account"_s, {Screen::Account}},
    };
    return groups;
}

} // namespace tarnwick
