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

/// Names weeks by their Mondays in local time. Plays come in runs of one week, so it remembers the
/// last one: what lies safely inside needs no look at the calendar.
class Weeks
{
public:
    QString nameFor(quint32 time)
    {
        if (time == 0)
            return nameFor(platform::now());
        const bool isInside = time > m_from && time < m_until;
        return isInside ? m_name : nameFor(QDateTime::fromSecsSinceEpoch(time));
    }

private:
    QString nameFor(const QDateTime &moment)
    {
        const QDate day = moment.toLocalTime().date();
        const QDate monday = day.addDays(Qt::Monday - day.dayOfWeek());
        if (monday != m_monday) {
            m_monday = monday;
            m_name = monday.toString(Qt::ISODate);
            // A day off either end: clocks may be set there.
            m_from = monday.addDays(1).startOfDay().toSecsSinceEpoch();
            m_until = monday.addDays(6).startOfDay().toSecsSinceEpoch();
        }
        return m_name;
    }

    QDate m_monday;
    QString m_name;
    qint64 m_from = 0;  ///< seconds since 1970
    qint64 m_until = 0; ///< likewise
};

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
    Weeks weeks;
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
                              laneFor(entry.path), weeks.nameFor(entry.time), entry.path});
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
