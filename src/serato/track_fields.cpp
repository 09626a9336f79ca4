#include "serato/track_fields.h"

#include <array>
#include <iterator>

namespace tarnwick {

namespace {

/// What a track's field is read as. Texts of the first kind hardly ever occur twice in a library.
enum class Kind : quint8 { OwnText, SharedText, Number, Flag };

struct TrackField
{
    consteval TrackField(Tag fieldTag, QString SeratoTrack::*member, Kind textKind)
        : tag(fieldTag)
        , kind(textKind)
        , text(member)
    {}
    consteval TrackField(Tag fieldTag, quint64 SeratoTrack::*member)
        : tag(fieldTag)
        , kind(Kind::Number)
        , number(member)
    {}
    consteval TrackField(Tag fieldTag, bool SeratoTrack::*member)
        : tag(fieldTag)
        , kind(Kind::Flag)
        , flag(member)
    {}

    Tag tag;
    Kind kind;
    QString SeratoTrack::*text = nullptr;
    quint64 SeratoTrack::*number = nullptr;
    bool SeratoTrack::*flag = nullptr;
};

// The tags are Serato's own. Mind the composer, "tcmp", and the comment, "tcom".
constexpr TrackField trackFields[] = {
    {"ttyp"_tag, &SeratoTrack::fileType, Kind::SharedText},
    {"pfil"_tag, &SeratoTrack::relativePath, Kind::OwnText},
    {"tsng"_tag, &SeratoTrack::title, Kind::OwnText},
    {"tart"_tag, &SeratoTrack::artist, Kind::SharedText},
    {"talb"_tag, &SeratoTrack::album, Kind::SharedText},
    {"tgen"_tag, &SeratoTrack::genre, Kind::SharedText},
    {"tcmp"_tag, &SeratoTrack::composer, Kind::SharedText},
    {"tcom"_tag, &SeratoTrack::comment, Kind::SharedText},
    {"ttyr"_tag, &SeratoTrack::year, Kind::SharedText},
    {"tbpm"_tag, &SeratoTrack::bpm, Kind::SharedText},
    {"tkey"_tag, &SeratoTrack::key, Kind::SharedText},
    {"tlen"_tag, &SeratoTrack::lengthText, Kind::SharedText},
    {"tbit"_tag, &SeratoTrack::bitrateText, Kind::SharedText},
    {"tsmp"_tag, &SeratoTrack::sampleRateText, Kind::SharedText},
    {"tsiz"_tag, &SeratoTrack::sizeText, Kind::SharedText},
    {"tadd"_tag, &SeratoTrack::dateAddedText, Kind::OwnText},
    {"ufsb"_tag, &SeratoTrack::fileSizeBytes},
    {"uadd"_tag, &SeratoTrack::dateAdded},
    {"utpc"_tag, &SeratoTrack::playCount},
    {"bmis"_tag, &SeratoTrack::flaggedMissing},
    {"bcrt"_tag, &SeratoTrack::corrupt},
    {"bply"_tag, &SeratoTrack::isPlayed},
};

constexpr size_t fieldCount = std::size(trackFields);

/// Spreads the tags above over 256 places, each on one of its own.
constexpr size_t placeOf(Tag tag)
{
    constexpr quint32 multiplier = 0x2265B1F5;
    return tag.code() * multiplier >> 24;
}

/// For each place the index of its field in the table, else that of the first.
consteval std::array<quint8, 256> indexOfPlaces()
{
    std::array<quint8, 256> places{};
    for (size_t i = 1; i < fieldCount; ++i) {
        quint8 &place = places[placeOf(trackFields[i].tag)];
        if (place != 0 || placeOf(trackFields[i].tag) == placeOf(trackFields[0].tag))
            throw "two tags share a place: take another multiplier";
        place = quint8(i);
    }
    return places;
}

constexpr std::array<quint8, 256> placesOfFields = indexOfPlaces();

/// The field of that tag, or none.
const TrackField *fieldOf(Tag tag)
{
    const TrackField &field = trackFields[placesOfFields[placeOf(tag)]];
    return field.tag == tag ? &field : nullptr;
}

} // namespace

void assignField(SeratoTrack &track, const SeratoParser::Field &field, SharedTexts &texts)
{
    const TrackField *known = fieldOf(field.tag);
    if (!known)
        return;
    switch (known->kind) {
    case Kind::OwnText:
        track.*known->text = texts.own(field.payload);
        break;
    case Kind::SharedText:
        texts.setShared(track.*known->text, field.payload);
        break;
    case Kind::Number:
        track.*known->number = field.number();
        break;
    case Kind::Flag:
        track.*known->flag = field.flag();
        break;
    }
}

SeratoTrack trackFromFields(const std::vector<SeratoParser::Field> &fields)
{
    SeratoTrack track;
    SharedTexts texts(1);
    for (const SeratoParser::Field &field : fields)
        assignField(track, field, texts);
    texts.settle();
    return track;
}

} // namespace tarnwick
