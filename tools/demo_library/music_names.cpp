#include "music_names.h"

#include <QStringList>
#include <initializer_list>

namespace tarnwick::demo {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView house[] = {u"House", u"house", u"HOUSE", u"House "};
constexpr QStringView techHouse[] = {u"Tech House", u"Tech-House", u"tech house"};
constexpr QStringView deepHouse[] = {u"Deep House", u"deep house", u"DeepHouse"};
constexpr QStringView techno[] = {u"Techno", u"techno", u"TECHNO"};
constexpr QStringView drumAndBass[] = {u"Drum & Bass", u"Drum n Bass", u"drum & bass", u"DnB"};
constexpr QStringView hipHop[] = {u"Hip-Hop", u"Hip Hop", u"hip-hop", u"HipHop", u"Hip-hop"};
constexpr QStringView rhythm[] = {u"R&B", u"RnB", u"r&b"};
constexpr QStringView disco[] = {u"Disco", u"disco", u"Nu Disco"};
constexpr QStringView funk[] = {u"Funk", u"funk", u"Funk / Soul"};
constexpr QStringView reggaeton[] = {u"Reggaeton", u"reggaeton", u"Reggaetón"};
constexpr QStringView afro[] = {u"Afrobeats", u"Afrobeat", u"afrobeats"};
constexpr QStringView amapiano[] = {u"Amapiano", u"amapiano"};
constexpr QStringView garage[] = {u"UK Garage", u"UKG", u"uk garage", u"Garage"};
constexpr QStringView trance[] = {u"Trance", u"trance"};
constexpr QStringView pop[] = {u"Pop", u"pop", u"POP"};
constexpr QStringView dancehall[] = {u"Dancehall", u"dancehall", u" Dancehall"};
constexpr QStringView electro[] = {u"Electro", u"electro", u"Électro"};
constexpr QStringView breaks[] = {u"Breaks", u"breaks", u"Breakbeat"};

constexpr Genre genreTable[] = {
    {house, 120, 127},       {techHouse, 124, 129}, {deepHouse, 116, 123}, {techno, 128, 142},
    {drumAndBass, 170, 176}, {hipHop, 78, 104},     {rhythm, 66, 98},      {disco, 108, 124},
    {funk, 96, 118},         {reggaeton, 86, 100},  {afro, 98, 114},       {amapiano, 110, 115},
    {garage, 128, 136},      {trance, 132, 140},    {pop, 92, 130},        {dancehall, 90, 108},
    {electro, 122, 132},     {breaks, 124, 138},
};

constexpr QStringView onsets[] = {u"Br", u"V",  u"T",  u"K",  u"Dr", u"M",  u"N",  u"L",
                                  u"S",  u"Sk", u"Fl", u"Qu", u"R",  u"Z",  u"P",  u"Gr",
                                  u"H",  u"Tr", u"J",  u"W",  u"Pl", u"St", u"Ch", u"B"};
constexpr QStringView middles[] = {u"a",   u"o",   u"e",    u"i",   u"u",   u"ae",  u"ou",  u"é",
                                   u"ari", u"elo", u"ino",  u"ora", u"umi", u"ava", u"ö",   u"ía",
                                   u"ané", u"izo", u"ello", u"ado", u"uri", u"øv",  u"ist", u"eka"};
constexpr QStringView endings[] = {u"n",   u"vik",   u"lo",  u"ra",  u"sk", u"ttor", u"ma",
                                   u"den", u"x",     u"lla", u"rne", u"st", u"nko",  u"vane",
                                   u"l",   u"quist", u"ndo", u"rim", u"th", u"bel"};

constexpr QStringView adjectives[] = {
    u"Amber",  u"Broken",   u"Crooked", u"Distant", u"Electric", u"Faded",  u"Golden", u"Hollow",
    u"Inner",  u"Jagged",   u"Kinder",  u"Liquid",  u"Midnight", u"Narrow", u"Open",   u"Paper",
    u"Quiet",  u"Restless", u"Silver",  u"Tidal",   u"Uneven",   u"Velvet", u"Warm",   u"Yonder",
    u"Zigzag", u"Alive",    u"Sunken",  u"Copper",  u"Northern", u"Burning"};
constexpr QStringView nouns[] = {
    u"Avenue",    u"Basement",  u"Cathedral", u"Daylight", u"Engine",   u"Ferry",
    u"Garden",    u"Harbour",   u"Island",    u"Jukebox",  u"Kettle",   u"Lantern",
    u"Machine",   u"Neighbour", u"Orbit",     u"Pavement", u"Question", u"Railway",
    u"Satellite", u"Tunnel",    u"Umbrella",  u"Vapour",   u"Window",   u"Yard",
    u"Zenith",    u"Corner",    u"Mirror",    u"Signal",   u"Ritual",   u"Fountain",
    u"Static",    u"Balcony",   u"Compass",   u"Orchard",  u"Skyline",  u"Tram"};
constexpr QStringView verbs[] = {u"Follow", u"Leave",  u"Borrow", u"Hold",  u"Forget", u"Carry",
                                 u"Answer", u"Ignite", u"Chase",  u"Paint", u"Circle", u"Lose"};
constexpr QStringView ornaments[] = {u" 🔥", u" ✨", u" ❤️", u" 🌙", u" Señorita", u" à Minuit"};

constexpr QStringView suffixes[] = {
    u" (Extended Mix)", u" (Original Mix)",   u" (Radio Edit)", u" (Clean)",
    u" (Dirty)",        u" [Instrumental]",   u" (Acapella)",   u" (Acappella)",
    u" (Intro)",        u" (Intro - Clean)",  u" - Club Mix",   u" - Extended Mix",
    u" (Dub)",          u" (Live)",           u" (VIP)",        u" - Remastered",
    u" (Quick Edit)",   u" [Clean Extended]", u" - Radio Edit", u" (VIP Mix)"};

constexpr QStringView comments[] = {u"Peak time",
                                    u"Opener",
                                    u"Warm up, low energy",
                                    u"Energy 7",
                                    u"Works after 2 am",
                                    u"8A - 124",
                                    u"Bought on vinyl, own rip",
                                    u"Promo, don't share",
                                    u"Great intro ⚡",
                                    u"Check the grid",
                                    u"Crowd pleaser",
                                    u"für später"};

constexpr QStringView classicalKeys[] = {u"Am", u"C",  u"Em",  u"G",  u"Dm",  u"F",  u"F#m", u"A",
                                         u"Bm", u"D",  u"Gm",  u"Bb", u"Cm",  u"Eb", u"C#m", u"E",
                                         u"Fm", u"Ab", u"Bbm", u"Db", u"Ebm", u"B",  u"Abm", u"F#"};

/// The texts in their order, which braces guarantee while operands of a plus are evaluated in any.
QString joined(std::initializer_list<QString> texts, const QString &separator = u" "_s)
{
    return QStringList(texts).join(separator);
}

template <typename Table>
QString word(Random &random, const Table &table)
{
    return random.pick(table).toString();
}

QString syllableName(Random &random)
{
    return joined({word(random, onsets), word(random, middles), word(random, endings)}, {});
}

QString twoWords(Random &random)
{
    return joined({word(random, adjectives), word(random, nouns)});
}

} // namespace

std::span<const Genre> genres()
{
    return genreTable;
}

QString artistName(Random &random)
{
    switch (random.below(8)) {
    case 0:
        return u"DJ "_s + syllableName(random);
    case 1:
        return u"The %1s"_s.arg(twoWords(random));
    case 2:
        return joined({syllableName(random), syllableName(random)}, u" & "_s);
    case 3:
        return joined({syllableName(random), syllableName(random).toLower()}, {});
    case 4:
        return joined({word(random, adjectives), syllableName(random)});
    default:
        return personName(random);
    }
}

QString songTitle(Random &random)
{
    QString title;
    switch (random.below(5)) {
    case 0:
        title = joined({word(random, verbs), word(random, nouns)}, u" the "_s);
        break;
    case 1:
        title = joined({word(random, nouns), word(random, nouns)}, u" of "_s);
        break;
    case 2:
        title = joined({word(random, verbs), word(random, adjectives), word(random, nouns)});
        break;
    default:
        title = twoWords(random);
    }
    return random.permille(25) ? title + random.pick(ornaments).toString() : title;
}

QString albumTitle(Random &random)
{
    const QString words = twoWords(random);
    return random.permille(300) ? words + u" EP"_s : words;
}

QString labelName(Random &random)
{
    const QString name = word(random, nouns);
    return name + (random.permille(500) ? u" Recordings"_s : u" Music"_s);
}

QString personName(Random &random)
{
    return joined({syllableName(random), syllableName(random)});
}

QString venueName(Random &random)
{
    return twoWords(random);
}

QString djComment(Random &random)
{
    return word(random, comments);
}

QString versionSuffix(Random &random)
{
    return random.permille(200) ? u" (%1 Remix)"_s.arg(syllableName(random))
                                : word(random, suffixes);
}

QString keyText(Random &random)
{
    if (random.permille(250)) {
        return word(random, classicalKeys);
    }
    const QString hour = QString::number(random.between(1, 12));
    return hour + (random.permille(650) ? u'A' : u'B');
}

} // namespace tarnwick::demo
