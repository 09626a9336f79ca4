#include "demo_options.h"

#include <QDir>

#include <algorithm>

namespace tarnwick::demo {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostTracks = 1'000'000;

struct Parsing
{
    Options options;
    bool tracksGiven = false;
    bool empty = false;
};

/// One option: its name, its value's name ("" for none) and what it does. False: a bad value.
struct Option
{
    QStringView name;
    QStringView value;
    QStringView help;
    bool (*take)(Parsing &parsing, const QString &value);
};

bool takeTracks(Parsing &parsing, const QString &value)
{
    bool ok = false;
    parsing.options.wish.tracks = value.toInt(&ok);
    parsing.tracksGiven = true;
    return ok && parsing.options.wish.tracks >= 0 && parsing.options.wish.tracks <= mostTracks;
}

bool takeSeed(Parsing &parsing, const QString &value)
{
    bool ok = false;
    parsing.options.wish.seed = value.toULongLong(&ok);
    return ok;
}

bool takeHome(Parsing &parsing, const QString &value)
{
    parsing.options.wish.home = QDir::cleanPath(QDir().absoluteFilePath(value));
    return !value.isEmpty();
}

bool takeSmallTags(Parsing &parsing, const QString &)
{
    parsing.options.wish.tagSizes = TagSizes::Small;
    return true;
}

bool takeExpect(Parsing &parsing, const QString &value)
{
    parsing.options.expectFile = value;
    return !value.isEmpty();
}

bool takeToday(Parsing &parsing, const QString &value)
{
    parsing.options.wish.today = QDate::fromString(value, u"yyyy-MM-dd"_s);
    return parsing.options.wish.today.isValid();
}

bool takeEmpty(Parsing &parsing, const QString &)
{
    return parsing.empty = true;
}

bool takeForce(Parsing &parsing, const QString &)
{
    parsing.options.existing = Existing::SetAside;
    return true;
}

bool takeHelp(Parsing &parsing, const QString &)
{
    return parsing.options.help = true;
}

constexpr Option optionTable[] = {
    {u"--tracks", u"N", u"how many tracks the database holds", takeTracks},
    {u"--seed", u"S", u"which library; the same seed gives the same bytes (default 1)", takeSeed},
    {u"--out", u"FOLDER", u"the home folder to write into; made if it isn't there", takeHome},
    {u"--small-tags", u"", u"tags of 4 KB at most and no artwork, for large libraries",
     takeSmallTags},
    {u"--expect", u"FILE", u"write there, as JSON, what a scan should find", takeExpect},
    {u"--today", u"YYYY-MM-DD", u"the day after the last session (default: today)", takeToday},
    {u"--empty", u"", u"a library without tracks", takeEmpty},
    {u"--force", u"", u"set a present library aside and write over audio files", takeForce},
    {u"--help", u"", u"print this text", takeHelp},
};

tl::expected<Options, QString> checked(const Parsing &parsing)
{
    const Options &options = parsing.options;
    if (options.help) {
        return options;
    }
    if (options.wish.home.isEmpty()) {
        return tl::unexpected(u"--out is missing"_s);
    }
    if (!parsing.tracksGiven && !parsing.empty) {
        return tl::unexpected(u"--tracks or --empty is missing"_s);
    }
    if (parsing.empty && options.wish.tracks > 0) {
        return tl::unexpected(u"--empty and --tracks contradict each other"_s);
    }
    return options;
}

} // namespace

tl::expected<Options, QString> parseOptions(const QStringList &arguments)
{
    Parsing parsing;
    parsing.options.wish.seed = 1;
    parsing.options.wish.today = QDate::currentDate();
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        const auto *option = std::ranges::find(optionTable, *argument, &Option::name);
        if (option == std::end(optionTable)) {
            return tl::unexpected(u"unknown option "_s + *argument);
        }
        QString value;
        if (!option->value.isEmpty()) {
            if (std::next(argument) == arguments.end()) {
                return tl::unexpected(*argument + u" needs a value"_s);
            }
            value = *++argument;
        }
        if (!option->take(parsing, value)) {
            return tl::unexpected(u"%1 can't be \"%2\""_s.arg(option->name, value));
        }
    }
    return checked(parsing);
}

QString helpText()
{
    QString text =
        u"demo_library --tracks N --out FOLDER [OPTIONS]\n\n"
        "Writes a Serato library as a DJ's would be, with its faults: the database, crates\n"
        "and history into FOLDER/Music/_Serato_, and audio files of silence below FOLDER.\n\n"_s;
    for (const Option &option : optionTable) {
        const QString left = u"  %1 %2"_s.arg(option.name, option.value);
        text += left.leftJustified(22) + u' ' + option.help.toString() + u'\n';
    }
    return text;
}

} // namespace tarnwick::demo
