#include "serato/serato_history.h"

#include "foundation/paths.h"
#include "foundation/text.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "serato/serato_library.h"

#include <QCryptographicHash>
#include <QDateTime>

using namespace Qt::StringLiterals;

namespace tarnwick::SeratoHistory {

namespace {

using SeratoParser::Field;
using SeratoParser::Notes;

constexpr Tag entryTag = "oent"_tag;
constexpr Tag fieldsTag = "adat"_tag;

/// The numbered fields that are read.
enum Number : quint32 {
    PathNumber = 2,
    TitleNumber = 6,
    ArtistNumber = 7,
    TimeNumber = 28,
};

constexpr qsizetype timeSize = 4; ///< bytes; a payload of another size states no time
constexpr qsizetype keyBytes = 10;

/// What an entry states, before anything is made of it.
struct Entry
{
    QString path;
    QString title;
    QString artist;
    quint32 time = 0; ///< seconds since 1970; 0 where none is stated
};

void assignNumbered(Entry &entry, quint32 number, QByteArrayView payload)
{
    switch (number) {
    case PathNumber:
        entry.path = decodeUtf16BigEndian(payload);
        break;
    case TitleNumber:
        entry.title = decodeUtf16BigEndian(payload);
        break;
    case ArtistNumber:
        entry.artist = decodeUtf16BigEndian(payload);
        break;
    case TimeNumber:
        if (payload.size() == timeSize)
            entry.time = qFromBigEndian<quint32>(payload.data());
        break;
    default:
        break;
    }
}

Entry entryIn(QByteArrayView bytes, Notes *notes)
{
    Entry entry;
    ByteReader reader(bytes);
    qsizetype walked = 0;
    while (reader.has(SeratoParser::headerSize)) {
        const quint32 number = *reader.takeBigEndian32();
        const quint32 length = *reader.takeBigEndian32();
        const auto payload = reader.take(length);
        if (!payload)
            break;
        assignNumbered(entry, number, *payload);
        walked = reader.position();
    }
    if (notes && walked < bytes.size())
        notes->append(u"adat: the last %1 of %2 bytes are no field"_s.arg(bytes.size() - walked)
                          .arg(bytes.size()));
    return entry;
}

/// Takes an artist that stands in the title to its own place.
void splitTitle(Entry &entry)
{
    static const QString separator = u" - "_s;
    const qsizetype at = entry.artist.isEmpty() ? entry.title.indexOf(separator) : -1;
    if (at < 0)
        return;
    entry.artist = entry.title.first(at);
    entry.title = entry.title.sliced(at + separator.size());
}

QString weekOf(const QDateTime &moment)
{
    const QDate day = moment.toLocalTime().date();
    return day.addDays(Qt::Monday - day.dayOfWeek()).toString(Qt::ISODate);
}

QString weekOf(quint32 time)
{
    return weekOf(time == 0 ? platform::now() : QDateTime::fromSecsSinceEpoch(time));
}

} // namespace

QString sessionsDir()
{
    return joinedPath(SeratoLibrary::homeLibrary(), u"History/Sessions"_s);
}

std::vector<PlayEvent> events(const LaneFor &laneFor)
{
    std::vector<PlayEvent> found;
    const QString folder = sessionsDir();
    const Result<QStringList> names = platform::listFolder(folder);
    for (const QString &name : names.value_or(QStringList())) {
        if (pathExtension(name) != u"session"_s)
            continue;
        if (const Result<QByteArray> bytes = platform::readFile(joinedPath(folder, name)))
            appendEvents(found, *bytes, laneFor);
    }
    return found;
}

void appendEvents(std::vector<PlayEvent> &events, QByteArrayView session, const LaneFor &laneFor,
                  Notes *notes)
{
    SeratoParser::walk(session, [&](const Field &record) {
        if (record.tag != entryTag)
            return;
        SeratoParser::walk(record.payload, [&](const Field &field) {
            if (field.tag != fieldsTag)
                return;
            Entry entry = entryIn(field.payload, notes);
            splitTitle(entry);
            if (entry.title.isEmpty())
                return;
            events.push_back({trackKey(entry.artist, entry.title), entry.title, entry.artist,
                              laneFor(entry.path), weekOf(entry.time), entry.path});
        });
    });
}

QString trackKey(const QString &artist, const QString &title)
{
    const QString joined = lowerCased(artist) + u'|' + lowerCased(title);
    const QByteArray digest =
        QCryptographicHash::hash(trimmedWhiteSpace(joined).toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.first(keyBytes).toHex());
}

} // namespace tarnwick::SeratoHistory
