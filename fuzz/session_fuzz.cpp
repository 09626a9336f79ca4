// A session of the history, beside a plain reading of it.

#include "fuzz_input.h"
#include "plain_records.h"
#include "platform/clock.h"
#include "serato/serato_history.h"

#include <QDate>
#include <QHash>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

QString laneFor(const QString &path)
{
    return u"lane of "_s + path;
}

/// The Monday of the week in which these seconds since 1970 lie, or of the present one.
QString weekOf(quint64 seconds)
{
    const QDateTime moment =
        seconds == 0 ? platform::now() : QDateTime::fromSecsSinceEpoch(qint64(seconds));
    QDate day = moment.toLocalTime().date();
    while (day.dayOfWeek() != Qt::Monday)
        day = day.addDays(-1);
    return day.toString(Qt::ISODate);
}

quint64 numberIn(QByteArrayView bytes)
{
    quint64 number = 0;
    for (const char byte : bytes)
        number = number * 256 + uchar(byte);
    return number;
}

/// The play that the fields of an entry state, if they name a title.
void addPlay(std::vector<PlayEvent> &plays, QByteArrayView fields)
{
    QHash<quint64, QString> texts;
    quint64 time = 0;
    while (fields.size() >= 8) {
        const quint64 number = numberIn(fields.first(4));
        const quint64 length = numberIn(fields.sliced(4, 4));
        if (length > quint64(fields.size() - 8))
            break;
        const QByteArrayView payload = fields.sliced(8, qsizetype(length));
        texts[number] = decodeUtf16BigEndian(payload);
        if (number == 28 && length == 4)
            time = numberIn(payload);
        fields = fields.sliced(qsizetype(8 + length));
    }
    QString title = texts[6];
    QString artist = texts[7];
    if (artist.isEmpty() && title.contains(u" - "_s)) {
        artist = title.section(u" - "_s, 0, 0);
        title = title.section(u" - "_s, 1);
    }
    if (!title.isEmpty())
        plays.push_back({SeratoHistory::trackKey(artist, title), title, artist, laneFor(texts[2]),
                         weekOf(time), texts[2]});
}

std::vector<PlayEvent> plainPlaysIn(QByteArrayView session)
{
    std::vector<PlayEvent> plays;
    for (const PlainRecord &record : plainRecordsIn(session)) {
        if (record.tag() != QByteArrayView("oent"))
            continue;
        for (const PlainRecord &field : plainRecordsIn(record.payload())) {
            if (field.tag() == QByteArrayView("adat"))
                addPlay(plays, field.payload());
        }
    }
    return plays;
}

bool isKey(const QString &text)
{
    return text.size() == 20 && std::all_of(text.begin(), text.end(), [](QChar digit) {
               return (digit >= u'0' && digit <= u'9') || (digit >= u'a' && digit <= u'f');
           });
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const platform::ScopedClock clock(QDateTime::fromSecsSinceEpoch(1'790'000'000));
    std::vector<PlayEvent> events;
    SeratoParser::Notes notes;
    SeratoHistory::appendEvents(events, viewOf(data, size), laneFor, &notes);
    require(events == plainPlaysIn(viewOf(data, size)), "every play, and no other");
    for (const PlayEvent &event : events)
        require(isKey(event.trackKey), "a key of 20 digits");
    std::vector<PlayEvent> again = events;
    SeratoHistory::appendEvents(again, viewOf(data, size), laneFor);
    require(again.size() == 2 * events.size(), "plays are added behind those that are there");
    return 0;
}
