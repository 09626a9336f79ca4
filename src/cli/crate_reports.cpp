// The commands that tell of crates, of what could be tidied about them, and of a set for a gig.

#include "cli/crate_reports.h"

#include "analysis/gig_check.h"
#include "cli/json_lists.h"
#include "cli/session.h"
#include "cli/text_table.h"
#include "screens/crate_hygiene/hygiene_figures.h"

using namespace Qt::StringLiterals;

namespace tarnwick::cli {

namespace {

void writeCrates(Output &out, const QList<LoadedCrate> &crates)
{
    out.json().beginObject();
    writeObjects(out, u"crates", crates, [](JsonWriter &json, const LoadedCrate &crate) {
        json.member(u"name", crate.name);
        json.member(u"count", crate.count());
        writeTexts(json, u"paths", crate.paths);
    });
    out.json().endObject();
}

void printCrates(Output &out, const QList<LoadedCrate> &crates)
{
    if (crates.isEmpty())
        out.line(u"No crates found in this library."_s);
    TextTable table;
    table.alignRight(0);
    for (const LoadedCrate &crate : crates)
        table.addRow({QString::number(crate.count()), crate.name});
    out.list(table);
}

void writeHygiene(Output &out, const CrateHygiene &hygiene)
{
    JsonWriter &json = out.json();
    json.beginObject();
    writeObjects(out, u"overlaps", hygiene.overlaps,
                 [](JsonWriter &one, const CrateHygiene::Overlap &overlap) {
                     one.member(u"a", overlap.a.name);
                     one.member(u"b", overlap.b.name);
                     one.member(u"shared", overlap.shared);
                     one.member(u"percent", overlap.percent);
                 });
    json.member(u"orphanCount", hygiene.orphanCount);
    writeTexts(json, u"orphanPaths", HygieneFigures::orphanPaths(hygiene));
    writeObjects(out, u"genreVariants", hygiene.genreVariants,
                 [](JsonWriter &one, const CrateHygiene::GenreVariant &variant) {
                     one.member(u"canon", variant.canon);
                     writeTexts(one, u"variants", variant.variants);
                     one.member(u"trackCount", variant.trackCount);
                 });
    json.endObject();
}

void printOverlaps(Output &out, const CrateHygiene &hygiene)
{
    out.line(u"Near-duplicate crates: %1"_s.arg(hygiene.overlaps.size()));
    TextTable table;
    table.alignRight(0);
    for (const CrateHygiene::Overlap &overlap : hygiene.overlaps) {
        table.addRow({u"  "_s + HygieneFigures::percent(overlap), overlap.a.name, overlap.b.name,
                      HygieneFigures::shared(overlap)});
    }
    out.list(table);
}

void printVariants(Output &out, const CrateHygiene &hygiene)
{
    out.line(u"Genre spelling variants: %1"_s.arg(hygiene.genreVariants.size()));
    TextTable table;
    table.alignRight(1);
    for (const CrateHygiene::GenreVariant &variant : hygiene.genreVariants) {
        table.addRow({u"  "_s + variant.canon, u"%1 tracks"_s.arg(variant.trackCount),
                      HygieneFigures::spellings(variant)});
    }
    out.list(table);
}

void printHygiene(Output &out, const CrateHygiene &hygiene)
{
    printOverlaps(out, hygiene);
    out.line();
    out.line(u"Tracks in no crate: %1"_s.arg(hygiene.orphanCount));
    const QStringList orphans = HygieneFigures::orphanPaths(hygiene);
    for (const QString &path : orphans.first(out.shownRows(orphans.size()))) {
        out.line(u"  "_s + path);
        out.passOn();
    }
    out.tellRest(orphans.size());
    out.line();
    printVariants(out, hygiene);
}

void writeChecks(Output &out, QStringView name, const QList<GigCheck::Check> &checks)
{
    writeObjects(out, name, checks, [](JsonWriter &json, const GigCheck::Check &check) {
        json.member(u"title", check.title);
        json.member(u"count", check.count);
        json.member(u"jump", infoOf(check.jump).rawValue);
    });
}

void writeGig(Output &out, const GigCheck &gig)
{
    JsonWriter &json = out.json();
    json.beginObject();
    json.member(u"totalTracks", gig.totalTracks());
    json.member(u"verdict", GigCheck::rawValue(gig.verdict()));
    json.member(u"blockerCount", gig.blockerCount());
    json.member(u"polishCount", gig.polishCount());
    writeChecks(out, u"blockers", gig.blockers);
    writeChecks(out, u"polish", gig.polish);
    json.endObject();
}

Tone toneOf(GigCheck::Verdict verdict)
{
    switch (verdict) {
    case GigCheck::Verdict::Ready:
        return Tone::Good;
    case GigCheck::Verdict::GoodEnough:
        return Tone::Warn;
    case GigCheck::Verdict::NotYet:
        break;
    }
    return Tone::Poor;
}

void printGig(Output &out, const GigCheck &gig)
{
    out.line(
        u"%1  %2 tracks"_s.arg(out.toned(toneOf(gig.verdict()), GigCheck::rawValue(gig.verdict())),
                               QString::number(gig.totalTracks())));
    TextTable table;
    table.alignRight(1);
    for (const GigCheck::Check &check : gig.blockers + gig.polish) {
        table.addRow({check.blocker ? u"blocker"_s : u"polish"_s, QString::number(check.count),
                      check.title});
    }
    if (!gig.blockers.isEmpty() || !gig.polish.isEmpty())
        out.line();
    out.list(table);
}

QSet<QString> crateNames(const AppState &app)
{
    QSet<QString> names;
    for (const LoadedCrate &crate : app.crates())
        names.insert(crate.name);
    return names;
}

} // namespace

Status runCrates(Session &session)
{
    if (session.wantsJson())
        writeCrates(session.out(), session.app().crates());
    else
        printCrates(session.out(), session.app().crates());
    return Status::Done;
}

Status runHygiene(Session &session)
{
    if (session.wantsJson())
        writeHygiene(session.out(), *session.app().hygiene());
    else
        printHygiene(session.out(), *session.app().hygiene());
    return Status::Done;
}

Status runGig(Session &session)
{
    const QSet<QString> all = crateNames(session.app());
    const QStringList asked = session.line().options.value(u"crate"_s);
    for (const QString &name : asked) {
        if (!all.contains(name)) {
            Session::complain(u"no crate is called '%1'"_s.arg(name));
            return Status::WrongUsage;
        }
    }
    const QSet<QString> chosen(asked.begin(), asked.end());
    const GigCheck gig(session.app().tracksInCrates(asked.isEmpty() ? all : chosen));
    if (session.wantsJson())
        writeGig(session.out(), gig);
    else
        printGig(session.out(), gig);
    return Status::Done;
}

} // namespace tarnwick::cli
